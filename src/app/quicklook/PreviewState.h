// The state of the preview's window, for its views. Main thread only.
#pragma once

#include <functional>
#include <string>

#include <QImage>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/quicklook/PreviewRowsModel.h"
#include "app/quicklook/PreviewScreen.h"
#include "app/quicklook/PreviewSheet.h"
#include "app/quicklook/TextLinesModel.h"

namespace tessaly {

class PreviewState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(tessaly::PreviewScreen::Kind body READ body NOTIFY changed)
  Q_PROPERTY(QString name READ name NOTIFY changed)
  Q_PROPERTY(QString symbol READ symbol NOTIFY changed)
  Q_PROPERTY(QString size READ size NOTIFY changed)
  Q_PROPERTY(QString headline READ headline NOTIFY changed)
  Q_PROPERTY(QString headlineSymbol READ headlineSymbol NOTIFY changed)
  Q_PROPERTY(QString notice READ notice NOTIFY changed)
  Q_PROPERTY(QString description READ description NOTIFY changed)
  Q_PROPERTY(int pictureCount READ pictureCount NOTIFY changed)
  Q_PROPERTY(tessaly::PreviewRowsModel* rows READ rows CONSTANT)
  Q_PROPERTY(tessaly::TextLinesModel* lines READ lines CONSTANT)
  Q_PROPERTY(bool canOpen READ canOpen CONSTANT)

 public:
  // Opens an item in its own application.
  using Open = std::function<void(const std::string& path)>;

  // With an empty `open`, the window has no button for it.
  explicit PreviewState(Open open, QObject* parent = nullptr);

  // Starts with another item, of which only the path is known.
  void load(const std::string& path);
  // Shows the content of the item, or nothing.
  void setSheet(PreviewSheet sheet);
  const PreviewSheet& sheet() const { return sheet_; }

  PreviewScreen::Kind body() const { return sheet_.body; }
  QString name() const { return sheet_.name; }
  QString symbol() const { return sheet_.symbol; }
  QString size() const { return sheet_.size; }
  QString headline() const { return sheet_.headline; }
  QString headlineSymbol() const { return sheet_.headlineSymbol; }
  QString notice() const { return sheet_.notice; }
  QString description() const { return sheet_.description; }
  int pictureCount() const { return static_cast<int>(sheet_.pictures.size()); }
  PreviewRowsModel* rows() { return &rows_; }
  TextLinesModel* lines() { return &lines_; }

  // Null if there is no such picture.
  QImage picture(int index) const;

  bool canOpen() const { return static_cast<bool>(open_); }
  // Opens the item in its own application, and asks for the preview to be closed.
  Q_INVOKABLE void open();

 signals:
  void changed();
  // A new item was loaded: its content gets the keyboard focus.
  void began();
  void opened();

 private:
  Open open_;
  std::string path_;
  PreviewSheet sheet_;
  PreviewRowsModel rows_;
  TextLinesModel lines_;
};

}  // namespace tessaly
