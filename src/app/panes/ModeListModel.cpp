#include "app/panes/ModeListModel.h"

#include <array>
#include <cstddef>

#include "look/Wording.h"

namespace tessaly {

namespace {

struct Button {
  VizMode mode;
  const char* key;
  const char* label;  // null if each system has its own
};

constexpr std::array<Button, 9> buttons = {{
    {VizMode::treemap, "treemap", "Treemap"},
    {VizMode::list, "list", "List Wins"},
    {VizMode::grew, "grew", "Grew"},
    {VizMode::duplicates, "duplicates", "Duplicates"},
    {VizMode::compare, "compare", "Compare"},
    {VizMode::largest, "largest", "Largest"},
    {VizMode::clones, "clones", nullptr},
    {VizMode::history, "history", "History"},
    {VizMode::safe, "safe", "Safe Score"},
}};

constexpr VizMode firstOfSecondGroup = VizMode::clones;

QString labelOn(const Button& button) {
  return QString::fromUtf8(button.label != nullptr ? button.label
                                                   : Wording::current().sharedBlocksMode.c_str());
}

}  // namespace

QString ModeListModel::keyOf(VizMode mode) {
  for (const Button& button : buttons) {
    if (button.mode == mode) return QString::fromLatin1(button.key);
  }
  return mode == VizMode::aliases ? QStringLiteral("aliases") : QStringLiteral("cloud");
}

ModeListModel::ModeListModel(Shown& shown, QObject* parent)
    : QAbstractListModel(parent), shown_(shown) {
  connect(&shown_, &Shown::vizModeChanged, this, &ModeListModel::takeMode);
  takeMode();
}

void ModeListModel::takeMode() {
  const std::optional<VizMode> before = mode_;
  mode_ = std::optional(shown_.vizMode());
  for (int row = 0; row < rowCount(); ++row) {
    const VizMode mode = buttons[static_cast<std::size_t>(row)].mode;
    if ((mode == before) != (mode == mode_)) emit dataChanged(index(row), index(row), {ActiveRole});
  }
}

void ModeListModel::choose(int row) {
  if (row < 0 || row >= rowCount()) return;
  shown_.setVizMode(buttons[static_cast<std::size_t>(row)].mode);
}

int ModeListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(buttons.size());
}

QVariant ModeListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const Button& button = buttons[static_cast<std::size_t>(index.row())];
  switch (role) {
    case KeyRole:
      return QString::fromLatin1(button.key);
    case LabelRole:
      return labelOn(button);
    case ActiveRole:
      return button.mode == mode_;
    case StartsGroupRole:
      return button.mode == firstOfSecondGroup;
    default:
      return {};
  }
}

QHash<int, QByteArray> ModeListModel::roleNames() const {
  return {{KeyRole, "key"},
          {LabelRole, "label"},
          {ActiveRole, "isActive"},
          {StartsGroupRole, "startsGroup"}};
}

}  // namespace tessaly
