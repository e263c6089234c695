// Content and position of the treemap's tooltip. Written by the surface, read by QML.
#pragma once

#include <QColor>
#include <QObject>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/map/TooltipPlacement.h"
#include "app/map/TooltipText.h"
#include "look/Color.h"

namespace tessaly {

class TooltipState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("Created in C++.")
  Q_PROPERTY(bool shown READ isShown NOTIFY changed)
  Q_PROPERTY(QColor tint READ tint NOTIFY changed)
  Q_PROPERTY(QString name READ name NOTIFY changed)
  Q_PROPERTY(QString size READ size NOTIFY changed)
  Q_PROPERTY(QString facts READ facts NOTIFY changed)
  Q_PROPERTY(QString age READ age NOTIFY changed)  // empty if there is no such line
  Q_PROPERTY(QString path READ path NOTIFY changed)
  Q_PROPERTY(QPointF place READ place NOTIFY moved)  // top left, in points of the canvas
  Q_PROPERTY(double width READ width CONSTANT)
  // The height of the panel, set by the view.
  Q_PROPERTY(double height READ height WRITE setHeight NOTIFY moved)

 public:
  using QObject::QObject;

  void show(const TooltipText& text, const Color& tint);
  void hide();
  // Places the tooltip beside the pointer, on a canvas of this size.
  void pointAt(QPointF pointer, QSizeF canvas);

  bool isShown() const { return shown_; }
  QColor tint() const { return tint_; }
  QString name() const { return name_; }
  QString size() const { return size_; }
  QString facts() const { return facts_; }
  QString age() const { return age_; }
  QString path() const { return path_; }
  QPointF place() const { return TooltipPlacement::topLeft(pointer_, canvas_, height_); }
  double height() const { return height_; }
  void setHeight(double height);
  static double width() { return TooltipPlacement::width; }

 signals:
  void changed();
  void moved();

 private:
  bool shown_ = false;
  QColor tint_;
  QString name_;
  QString size_;
  QString facts_;
  QString age_;
  QString path_;
  QPointF pointer_;
  QSizeF canvas_;
  double height_ = 0;
};

}  // namespace tessaly
