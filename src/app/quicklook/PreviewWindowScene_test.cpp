#include "app/quicklook/PreviewWindowScene_test.h"

#include <stdexcept>

#include <QAccessible>
#include <QTest>

#include "scan/PathName.h"

namespace tessaly {

namespace {

void collect(QQuickItem* top, const QString& name, std::vector<QQuickItem*>& found) {
  if (!top->isVisible()) return;
  if (top->objectName() == name) found.push_back(top);
  for (QQuickItem* child : top->childItems()) collect(child, name, found);
}

}  // namespace

PreviewWindowScene::PreviewWindowScene() {
  owner_.setGeometry(100, 100, 600, 500);
  owner_.show();
  panel_ = std::make_unique<PreviewWindow>(
      engine_, dispatch_,
      [this](const std::string& path, const std::function<bool()>& isCancelled) {
        read_.push_back(path);
        if (whileReading_) whileReading_(isCancelled);
        return contents_.at(path);
      },
      [this](const std::string& path) { opened_.push_back(path); });
  panel_->setOwner(&owner_);
  look_ = std::make_unique<QuickLook>(panel_.get());
}

PreviewWindowScene::~PreviewWindowScene() {
  look_.reset();
  panel_.reset();
}

PreviewContent PreviewWindowScene::contentOf(const std::string& path,
                                             decltype(PreviewContent::body) body,
                                             std::int64_t size) {
  PreviewContent content;
  content.facts.path = path;
  content.facts.name = lastPathComponent(path);
  content.facts.isDir = std::holds_alternative<FolderPreview>(body);
  content.facts.size = content.facts.isDir ? 0 : size;
  content.body = std::move(body);
  return content;
}

QQuickWindow& PreviewWindowScene::show(const PreviewContent& content) {
  contents_[content.facts.path] = content;
  look_->show(content.facts.path);
  dispatch_.drain(Dispatch::Queue::userInitiated);
  dispatch_.drain(Dispatch::Queue::main);
  settle();
  return window();
}

QQuickWindow& PreviewWindowScene::window() {
  if (panel_->window() == nullptr) throw std::logic_error("the preview's window was never made");
  return *panel_->window();
}

void PreviewWindowScene::settle() {
  // Layouts and polishing can each cause the next.
  for (int round = 0; round < 3; ++round) {
    QCoreApplication::processEvents();
    window().grabWindow();
  }
}

std::vector<QQuickItem*> PreviewWindowScene::items(const QString& name) {
  settle();
  std::vector<QQuickItem*> found;
  collect(window().contentItem(), name, found);
  return found;
}

QQuickItem* PreviewWindowScene::item(const QString& name) {
  const std::vector<QQuickItem*> found = items(name);
  EXPECT_EQ(found.size(), 1U) << "items have the name " << name.toStdString();
  return found.size() == 1 ? found.front() : nullptr;
}

bool PreviewWindowScene::shows(const QString& name) {
  return !items(name).empty();
}

QString PreviewWindowScene::text(const QString& name) {
  QQuickItem* found = item(name);
  return found != nullptr ? found->property("text").toString() : QString();
}

QString PreviewWindowScene::spokenName(const QString& name) {
  QAccessible::setActive(true);
  QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item(name));
  return interface != nullptr ? interface->text(QAccessible::Name) : QString();
}

void PreviewWindowScene::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  settle();
  QTest::keyClick(&window(), key, modifiers);
  if (isOpen()) settle();
}

}  // namespace tessaly
