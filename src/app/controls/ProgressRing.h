// A ring that fills clockwise from the top with progress, on a faint track. Since the progress may
// not change for a long time, a short light moves round the ring as `turn` goes from 0 to 1.
#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace tessaly {

class ProgressRing : public QQuickPaintedItem {
  Q_OBJECT
  QML_ELEMENT
  Q_PROPERTY(double value MEMBER value_ WRITE setValue NOTIFY changed)  // 0 to 1
  Q_PROPERTY(double turn MEMBER turn_ WRITE setTurn NOTIFY changed)     // 0 to 1
  Q_PROPERTY(double strokeWidth MEMBER strokeWidth_ WRITE setStrokeWidth NOTIFY changed)
  // The colours at the start and at the end of the arc.
  Q_PROPERTY(QColor from MEMBER from_ WRITE setFrom NOTIFY changed)
  Q_PROPERTY(QColor to MEMBER to_ WRITE setTo NOTIFY changed)

 public:
  explicit ProgressRing(QQuickItem* parent = nullptr);

  void setValue(double value);
  void setTurn(double turn);
  void setStrokeWidth(double width);
  void setFrom(const QColor& color);
  void setTo(const QColor& color);

  void paint(QPainter* painter) override;

 signals:
  void changed();

 private:
  void repaint();

  double value_ = 0;
  double turn_ = 0;
  double strokeWidth_ = 6;
  QColor from_;
  QColor to_;
};

}  // namespace tessaly
