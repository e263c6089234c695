// The texts that name the system, for views: `Wording.reveal`. They are constant during the run.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "look/Wording.h"

namespace tessaly {

class WordingType : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(Wording)
  QML_SINGLETON
  Q_PROPERTY(QString idleLine READ idleLine CONSTANT)
  Q_PROPERTY(QString scanWholeDisk READ scanWholeDisk CONSTANT)
  Q_PROPERTY(QString reveal READ reveal CONSTANT)
  Q_PROPERTY(QString searchKeys READ searchKeys CONSTANT)
  Q_PROPERTY(QString sharedBlocksTitle READ sharedBlocksTitle CONSTANT)
  Q_PROPERTY(QString sharedBlocksCaption READ sharedBlocksCaption CONSTANT)
  Q_PROPERTY(QString cloudTitle READ cloudTitle CONSTANT)
  Q_PROPERTY(QString cloudCaption READ cloudCaption CONSTANT)
  Q_PROPERTY(QString gateHeading READ gateHeading CONSTANT)
  Q_PROPERTY(QString gateCaption READ gateCaption CONSTANT)
  Q_PROPERTY(QStringList gateSteps READ gateSteps CONSTANT)  // three
  Q_PROPERTY(QString gateGrant READ gateGrant CONSTANT)
  Q_PROPERTY(QString gateNote READ gateNote CONSTANT)

 public:
  using QObject::QObject;

  QString idleLine() const { return shown(words().idleLine); }
  QString scanWholeDisk() const { return shown(words().scanWholeDisk); }
  QString reveal() const { return shown(words().reveal); }
  QString searchKeys() const { return shown(words().searchKeys); }
  QString sharedBlocksTitle() const { return shown(words().sharedBlocksTitle); }
  QString sharedBlocksCaption() const { return shown(words().sharedBlocksCaption); }
  QString cloudTitle() const { return shown(words().cloudTitle); }
  QString cloudCaption() const { return shown(words().cloudCaption); }
  QString gateHeading() const { return shown(words().gate.heading); }
  QString gateCaption() const { return shown(words().gate.caption); }
  QStringList gateSteps() const {
    QStringList steps;
    for (const std::string& step : words().gate.steps) steps << shown(step);
    return steps;
  }
  QString gateGrant() const { return shown(words().gate.grant); }
  QString gateNote() const { return shown(words().gate.note); }

 private:
  static const Wording& words() { return Wording::current(); }
  static QString shown(const std::string& text) { return QString::fromStdString(text); }
};

}  // namespace tessaly
