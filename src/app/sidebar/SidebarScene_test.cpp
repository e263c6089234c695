#include "app/sidebar/SidebarScene_test.h"

#include <algorithm>

#include <QQmlEngine>
#include <QQmlProperty>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

#include "support/PointerMoves.h"

Q_IMPORT_QML_PLUGIN(Tessaly_ControlsPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_ModelPlugin)
Q_IMPORT_QML_PLUGIN(Tessaly_SidebarPlugin)

namespace tessaly {

namespace {

constexpr int width = 260;

void collect(QQuickItem* item, const QString& name, std::vector<QQuickItem*>& found) {
  if (!item->isVisible()) return;
  if (item->objectName() == name) found.push_back(item);
  for (QQuickItem* child : item->childItems()) collect(child, name, found);
}

std::string onDisk(const QString& name) {
  return name == "/" ? "/" : "/media/" + name.toStdString();
}

}  // namespace

void SidebarScene::fill() {
  volume_ = DiskUsage{.total = 494LL << 30U,
                      .used = 371LL << 30U,
                      .free = 123LL << 30U,
                      .usedPercent = 75.1,
                      .fileSystem = "ext4"};
  settings_.setTexts(ScanStore::pinsKey, {"/home/user/Projects", "/srv/media"});
  settings_.setTexts(ScanStore::recentsKey,
                     {"/home/user", "/", "/srv/media", "/home/user/Films \xE9t\xE9"});
  settings_.setTexts(ScanStore::excludesKey, {"/home/user/Mirror", "/srv/backup"});
  std::vector<BloatFilter> filters = BloatFilter::catalog();
  filters[0].enabled = true;
  filters[1].enabled = filters[1].skipScan = true;
  filters[2].skipScan = true;
  ScanStore::saveFilters(filters, settings_);
  fillTrash(17);
  restart();
  mount({"/", "Backup", "Films"});
  session().machine().refreshDisk();
}

void SidebarScene::mount(const QStringList& volumes) {
  df_ = "Filesystem 1K-blocks Used Available Use% Mounted on\n";
  for (const QString& volume : volumes)
    df_ += "/dev/sda1 100000000 60000000 40000000 60% " + onDisk(volume) + "\n";
  const std::vector<std::string> recents = session().choices().recents();
  scanTo(folder("/home/user", 92LL << 30U, {file("/home/user/f", 92LL << 30U)}));
}

void SidebarScene::remember(std::string_view key, const std::vector<std::string>& paths) {
  settings_.setTexts(key, paths);
  restart();
}

void SidebarScene::fillTrash(int count) {
  trash_ = std::to_string(count);
  emptied_ = "0";
  session().machine().refreshDisk();
}

void SidebarScene::show(int height) {
  access_ = std::make_unique<AccessController>(settings_, [this] { return mayRead_; });
  access_->setShowGate(false);
  view_ = std::make_unique<QQuickView>();
  QObject::connect(view_->engine(), &QQmlEngine::warnings, [](const QList<QQmlError>& errors) {
    for (const QQmlError& error : errors) ADD_FAILURE() << error.toString().toStdString();
  });
  view_->setResizeMode(QQuickView::SizeRootObjectToView);
  actions_ = std::make_unique<SidebarState>(session(), *access_);
  view_->setInitialProperties({{"actions", QVariant::fromValue(actions_.get())}});
  view_->resize(width, height);
  view_->setSource(
      QUrl(QStringLiteral("qrc:/qt-project.org/imports/Tessaly/Sidebar/SidebarView.qml")));
  ASSERT_EQ(view_->status(), QQuickView::Ready);
  view_->rootObject()->setObjectName("sidebar");
  view_->show();
  view_->requestActivate();
  ASSERT_TRUE(QTest::qWaitForWindowActive(view_.get()));
  settle();
}

std::vector<QQuickItem*> SidebarScene::all(const QString& name, QQuickItem* top) const {
  std::vector<QQuickItem*> found;
  collect(top != nullptr ? top : view_->contentItem(), name, found);
  return found;
}

QQuickItem* SidebarScene::find(const QString& path) const {
  QQuickItem* item = view_->contentItem();
  for (const QString& name : path.split('/')) {
    const auto found = all(name, item);
    if (found.size() != 1) {
      ADD_FAILURE() << found.size() << " items are " << path.toStdString();
      return view_->rootObject();
    }
    item = found.front();
  }
  return item;
}

bool SidebarScene::shows(const QString& name) const {
  return !all(name).empty();
}

QVariant SidebarScene::read(const QString& path, const QString& property) const {
  const QQmlProperty found(find(path), property, view_->engine());
  EXPECT_TRUE(found.isValid()) << path.toStdString() << "." << property.toStdString();
  return found.read();
}

QString SidebarScene::text(QQuickItem* top, const QString& name) const {
  const auto found = all(name, top);
  EXPECT_EQ(found.size(), 1U) << name.toStdString();
  return found.empty() ? QString() : found.front()->property("text").toString();
}

QStringList SidebarScene::labels(const QString& section, const QString& label) const {
  QStringList texts;
  for (QQuickItem* item : all(label, find(section))) texts << item->property("text").toString();
  return texts;
}

QRectF SidebarScene::rectOf(QQuickItem* item) {
  return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

void SidebarScene::settle() {
  // Deferred deletions, layouts and polishing can each cause the next.
  for (int round = 0; round < 3; ++round) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
    view_->grabWindow();
  }
}

void SidebarScene::click(QQuickItem* item) {
  QTest::mouseClick(view_.get(), Qt::LeftButton, {}, rectOf(item).center().toPoint());
  settle();
}

void SidebarScene::hover(QQuickItem* item) {
  QTest::mouseMove(view_.get(), rectOf(item).center().toPoint());
  settle();
}

void SidebarScene::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(view_.get(), key, modifiers);
  settle();
}

void SidebarScene::wheel(int degrees) {
  const QPointF point(width / 2.0, 300);
  turnWheel(*view_, point, {0, degrees * 8});
  settle();
}

QImage SidebarScene::picture() {
  settle();
  return view_->grabWindow();
}

void SidebarScene::keepPicture(const char* name) {
  const QString folder = qEnvironmentVariable("TESSALY_PICTURES");
  if (folder.isEmpty()) return;
  EXPECT_TRUE(picture().save(folder + '/' + name + ".png"));
}

}  // namespace tessaly
