// Names with direction controls: no text of the window and no text for assistive tools contains
// such a character.
#include <algorithm>
#include <cerrno>
#include <gmock/gmock.h>
#include <set>
#include <string>
#include <vector>

#include <QAbstractItemModel>
#include <QAccessible>
#include <QGuiApplication>
#include <QMetaProperty>

#include "journeys/Journey.h"
#include "scan/DiskScanner.h"
#include "support/WindowItems.h"

namespace tessaly {
namespace {

using testing::IsEmpty;
using testing::IsSupersetOf;

// Every direction control, and a name that they would make look like another.
const std::string hostile =
    "\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069\u200E\u200F\u061Cgpj.exe";
const QString shownAs = QString(12, QChar(QChar::ReplacementCharacter)) + QStringLiteral("gpj.exe");

bool isControl(QChar character) {
  const char16_t value = character.unicode();
  return value == 0x061c || value == 0x200e || value == 0x200f ||
         (value >= 0x202a && value <= 0x202e) || (value >= 0x2066 && value <= 0x2069);
}

std::string runOfDf(const std::string& path, const std::vector<std::string>& args, double) {
  if (path != "/bin/df") return noTools(path, args);
  return "Filesystem 1024-blocks Used Available Capacity Mounted on\n"
         "/dev/sda1 1000000 500000 500000 50% /\n"
         "/dev/sdb1 1000000 500000 500000 50% /media/" +
         hostile + "\n";
}

// Its first and its last report is the name.
DiskNode walkToldOfOneName(const std::string& root, const DiskScanner::Callbacks& callbacks,
                           const DiskScanner::Options& options) {
  callbacks.progress("12%  " + hostile);
  return DiskScanner::scan(root, {}, options);
}

// Every text in the lists is the name, or a path with it.
PostScanAnalysis::Engines hostileFinds() {
  const std::string path = "/srv/" + hostile;
  return {.duplicates =
              [path](const auto&, const auto&) {
                return std::vector<DuplicateGroup>{
                    {.digest = hostile, .files = {{hostile, path, 1}, {hostile, path + "2", 1}}}};
              },
          .deadLinks =
              [path](const auto&, const auto&) {
                return std::vector<DeadLink>{
                    {.name = hostile, .path = path, .destination = hostile, .kind = hostile}};
              },
          .cloudItems =
              [path](const auto&, const auto&) {
                return std::vector<CloudItem>{{.name = hostile, .path = path}};
              },
          .cloneGroups =
              [path](const auto&, const auto&) {
                return std::vector<ShareGroup>{
                    {.id = hostile,
                     .kind = hostile,
                     .files = {{.name = hostile, .path = path}, {.name = hostile, .path = path}}}};
              }};
}

class HostileNames : public Journey {
 protected:
  explicit HostileNames(bool scans = true, bool realPreview = false)
      : Journey(hostile + "/\n  in" + hostile + "/\n    deep" + hostile + " 3M\n" + "file" +
                    hostile + " 2M\n",
                [realPreview](Application::Services& services) {
                  services.run = runOfDf;
                  services.walk = walkToldOfOneName;
                  services.analysis = hostileFinds();
                  if (realPreview) services.previewPanel = nullptr;
                }) {
    QAccessible::setActive(true);
    machine_.settings.setTexts(ScanStore::pinsKey, {"/srv/" + hostile});
    machine_.settings.setTexts(ScanStore::recentsKey, {"/srv/recent" + hostile});
    machine_.settings.setTexts(ScanStore::excludesKey, {"/srv/out" + hostile});
    restart();
    if (!scans) return;
    session().scanHome();
    finishScan();
  }

  DiskNode child(std::size_t index) { return session().navigation().current()->children()[index]; }

  // Reads every text of the objects below the windows and of their accessible elements. Records
  // where the name was found in its displayed form.
  void read() {
    settle(window());
    for (QWindow* top : QGuiApplication::topLevelWindows()) {
      auto* const quick = qobject_cast<QQuickWindow*>(top);
      if (quick == nullptr || !quick->isVisible()) continue;
      readObject(quick);
      readTree(quick->contentItem());
    }
  }

  // "object.property" of every text with a direction control.
  std::set<std::string> misleading_;
  // Object names, and classes of models, that contained the displayed form of the name.
  std::set<std::string> shown_;

 private:
  void take(const QString& text, const QString& owner, const QString& what) {
    if (std::any_of(text.begin(), text.end(), isControl))
      misleading_.insert((owner + '.' + what).toStdString());
    if (text.contains(shownAs)) shown_.insert(owner.toStdString());
  }

  void readObject(QObject* object) {
    const QString owner = object->objectName().isEmpty()
                              ? QString::fromLatin1(object->metaObject()->className())
                              : object->objectName();
    const QMetaObject* const meta = object->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
      const QMetaProperty property = meta->property(i);
      if (property.metaType().flags().testFlag(QMetaType::PointerToQObject)) {
        // States have their models as members.
        auto* const held = property.read(object).value<QObject*>();
        if (const auto* const model = qobject_cast<QAbstractItemModel*>(held)) readModel(*model);
      }
      if (property.metaType() != QMetaType::fromType<QString>()) continue;
      take(property.read(object).toString(), owner, QString::fromLatin1(property.name()));
    }
    if (const auto* const model = qobject_cast<QAbstractItemModel*>(object)) readModel(*model);
    if (QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(object)) {
      for (const auto part :
           {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help})
        take(told->text(part), owner, QStringLiteral("accessible text"));
    }
  }

  void readModel(const QAbstractItemModel& model) {
    const QString owner = QString::fromLatin1(model.metaObject()->className());
    const QHash<int, QByteArray> roles = model.roleNames();
    for (int row = 0; row < model.rowCount(); ++row) {
      for (auto role = roles.begin(); role != roles.end(); ++role) {
        const QVariant value = model.data(model.index(row, 0), role.key());
        if (value.metaType() == QMetaType::fromType<QString>())
          take(value.toString(), owner, QString::fromLatin1(role.value()));
      }
    }
  }

  void readTree(QQuickItem* item) {
    readObject(item);
    // States and models are children of items without being items.
    for (QObject* child : item->children()) {
      if (qobject_cast<QQuickItem*>(child) == nullptr) readObject(child);
    }
    for (QQuickItem* child : item->childItems()) readTree(child);
  }
};

TEST_F(HostileNames, hostile_names_are_harmless_on_the_map_and_beside_it) {
  session().open(child(0));
  read();
  hoverAt(middleOf(item("canvas")));
  read();
  EXPECT_THAT(misleading_, IsEmpty());
  EXPECT_THAT(shown_, IsSupersetOf({"chip", "pathLabel", "excludeName", "name", "tooltipName",
                                    "tooltipPath", "tessaly::PathListModel",
                                    "tessaly::BreadcrumbModel", "tessaly::VolumeListModel"}));
}

TEST_F(HostileNames, hostile_names_are_harmless_in_questions_and_menus) {
  session().shown().setMenuNode(child(0));
  read();
  session().shown().setMenuNode(std::nullopt);
  session().removal().setCriticalWarning(child(0));
  read();
  session().removal().dismissWarning();
  click("volumeMenu");
  read();
  EXPECT_THAT(misleading_, IsEmpty());
  EXPECT_THAT(shown_, IsSupersetOf({"menuTitle", "alertMessage", "menuLabel"}));
}

TEST_F(HostileNames, hostile_names_are_harmless_in_the_queue_and_in_messages) {
  session().cleanupQueue().addToQueue(child(0));
  session().cleanupQueue().addToQueue(child(1));
  machine_.trash.put(child(0).path());
  machine_.trash.refuse(child(0).path(), EROFS);
  session().selection().setFocused(child(0));
  session().trashFocused();
  read();
  EXPECT_THAT(misleading_, IsEmpty());
  EXPECT_THAT(shown_, IsSupersetOf({"name", "toast", "failure", "tessaly::NodeRows"}));
}

TEST_F(HostileNames, hostile_names_are_harmless_during_a_scan) {
  session().scan(child(0).path());
  walk();
  while (dispatch_.step(Dispatch::Queue::main)) read();
  EXPECT_THAT(misleading_, IsEmpty());
  EXPECT_THAT(shown_, IsSupersetOf({"progress"}));
}

class HostileRoot : public HostileNames {
 protected:
  HostileRoot() : HostileNames(false) {}
};

TEST_F(HostileRoot, a_hostile_root_is_harmless_if_it_cannot_be_read) {
  session().scan("/nowhere/" + hostile);
  finishScan();
  ASSERT_EQ(session().run().status(), ScanStatus::error);
  read();
  EXPECT_THAT(misleading_, IsEmpty());
  EXPECT_THAT(shown_, IsSupersetOf({"message"}));
}

TEST_F(HostileNames, a_hostile_name_of_a_volume_is_harmless) {
  session().scan("/media/" + hostile);
  finishScan();
  read();
  EXPECT_THAT(misleading_, IsEmpty());
}

class HostilePreview : public HostileNames {
 protected:
  HostilePreview() : HostileNames(true, true) {}
};

TEST_F(HostilePreview, a_hostile_name_is_harmless_in_a_preview) {
  for (const std::size_t index : {0U, 1U}) {
    session().shown().setMenuNode(child(index));
    settle(window());
    click("menuQuickLook");
    dispatch_.drainAll();
    read();
  }
  EXPECT_THAT(misleading_, IsEmpty());
  EXPECT_THAT(shown_, IsSupersetOf({"quickLookWindow", "name", "itemName"}));
}

TEST_F(HostileNames, hostile_names_are_harmless_in_the_lists_of_an_analysis) {
  for (const auto mode : {VizMode::duplicates, VizMode::clones, VizMode::aliases, VizMode::cloud}) {
    session().shown().setVizMode(mode);
    dispatch_.drainAll();
    read();
  }
  EXPECT_THAT(misleading_, IsEmpty());
  EXPECT_THAT(shown_, IsSupersetOf({"place", "name", "target", "kind", "rowFace", "queueRow",
                                    "tessaly::DuplicateListModel", "tessaly::CloneListModel",
                                    "tessaly::AliasListModel", "tessaly::CloudListModel"}));
}

TEST_F(HostileNames, hostile_names_are_passed_on_unchanged) {
  session().selection().selectNodes({child(0)}, false);
  session().selection().copySelectedPaths();
  EXPECT_EQ(machine_.pasteboard.text, child(0).path());
  EXPECT_NE(child(0).path().find(hostile), std::string::npos);
}

}  // namespace
}  // namespace tessaly
