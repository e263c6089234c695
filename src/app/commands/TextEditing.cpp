#include "app/commands/TextEditing.h"

#include <QMetaObject>
#include <QVariant>

namespace tessaly {

void TextEditing::setTarget(QQuickItem* target) {
  target_ = target;
  emit changed();
}

// The two kinds of fields have no common class, but the same operations.
bool TextEditing::isField() const {
  return target_ && (target_->inherits("QQuickTextInput") || target_->inherits("QQuickTextEdit"));
}

bool TextEditing::isReadOnly() const {
  return target_->property("readOnly").toBool();
}

bool TextEditing::canCopy() const {
  // Hidden text must not be copied.
  return isField() && !target_->property("selectedText").toString().isEmpty() &&
         target_->property("echoMode").toInt() == 0;
}

bool TextEditing::canCut() const {
  return canCopy() && !isReadOnly();
}

bool TextEditing::canPaste() const {
  return isField() && target_->property("canPaste").toBool() && !isReadOnly();
}

bool TextEditing::canSelectAll() const {
  return isField() && target_->property("length").toInt() > 0;
}

void TextEditing::tell(const char* operation) {
  const QMetaObject& type = *target_->metaObject();
  type.method(type.indexOfMethod(operation)).invoke(target_, Qt::DirectConnection);
  emit changed();
}

void TextEditing::cut() {
  if (canCut()) tell("cut()");
}

void TextEditing::copy() {
  if (canCopy()) tell("copy()");
}

void TextEditing::paste() {
  if (canPaste()) tell("paste()");
}

void TextEditing::selectAll() {
  if (canSelectAll()) tell("selectAll()");
}

}  // namespace tessaly
