#include "app/commands/MenuCommands.h"

#include <utility>

namespace tessaly {

namespace {

bool always(const ScanSession& /*session*/) {
  return true;
}

bool hasSelection(const ScanSession& session) {
  return !session.selection().selected().empty();
}

// While a batch moves to the Trash, nothing else moves.
bool canMove(const ScanSession& session) {
  return !session.removal().isMoving();
}

bool canZip(const ScanSession& session) {
  return hasSelection(session) && canMove(session);
}

bool hasTree(const ScanSession& session) {
  return !session.navigation().stack().empty();
}

bool isBelowRoot(const ScanSession& session) {
  return session.navigation().stack().size() >= 2;
}

bool canRescan(const ScanSession& session) {
  return !session.run().scanRoot().empty() && session.run().status() != ScanStatus::scanning;
}

bool canPutBack(const ScanSession& session) {
  return !session.removal().lastTrashed().empty() && canMove(session);
}

}  // namespace

MenuCommands::MenuCommands(Services services, QObject* parent)
    : QObject(parent), services_(std::move(services)) {
  addAll();
  // The signals of everything that the conditions depend on.
  const ScanSession& session = services_.session;
  connect(&session.selection(), &Selection::selectionChanged, this, &MenuCommands::refresh);
  connect(&session.navigation(), &Navigation::stackChanged, this, &MenuCommands::refresh);
  connect(&session.run(), &ScanRun::scanRootChanged, this, &MenuCommands::refresh);
  connect(&session.run(), &ScanRun::statusChanged, this, &MenuCommands::refresh);
  connect(&session.removal(), &Removal::lastTrashedChanged, this, &MenuCommands::refresh);
  connect(&session.removal(), &Removal::movingChanged, this, &MenuCommands::refresh);
}

void MenuCommands::addAll() {
  ScanSession& session = services_.session;
  CommandTarget& target = services_.target;
  NodeActions& actions = services_.actions;
  // Qt uses Control for this modifier on this system, and for Command on the other one.
  constexpr auto command = Qt::CTRL;
  constexpr auto shift = Qt::SHIFT;
  constexpr auto option = Qt::ALT;
  const auto search = [&session] { session.shown().setSearchOpen(true); };

  add("Search Files…", command | Qt::Key_F, always, search);
  add("Quick Search", command | shift | Qt::Key_Space, always, search);
  add("Queue Selection", command | shift | Qt::Key_L, hasSelection, &ScanSession::queueSelected);
  add("Compare Folder…", command | Qt::Key_K, hasTree, &ScanSession::compareWithFolder);
  add("Watch Folder", command | option | Qt::Key_W, hasTree, [&session] {
    if (session.watch().watching()) {
      session.watch().stopWatch();
    } else {
      session.startWatch();
    }
  });
  add("Zip Then Trash Selection", command | shift | Qt::Key_E, canZip,
      [&session] { session.zipThenTrash(session.selection().selectedNodes()); });
  add("Go Back", command | Qt::Key_BracketLeft, isBelowRoot,
      [&session] { session.navigation().back(); });
  add("Rescan", command | Qt::Key_R, canRescan, &ScanSession::rescan);
  add("Queue Focused Item", command | Qt::Key_L, always, [&target] { target.addToQueue(); });
  add("Quick Look", command | Qt::Key_Y, always,
      [&target, &actions] { actions.quickLook(target.node()); });
  add("Select All Visible", command | Qt::Key_A, hasTree, &ScanSession::selectAllCurrent);
  add("Copy Path", command | shift | Qt::Key_C, always, [&target] { target.copyPath(); });
  add("Put Back Last Trash", command | option | Qt::Key_Z, canPutBack, &ScanSession::undoTrash);
  add("Export JSON…", QKeySequence(), hasTree, &ScanSession::exportJSON);
  add("Move Focused to Trash", command | Qt::Key_Backspace, canMove,
      [&target] { target.moveToTrash(); });
}

void MenuCommands::add(const char* title, const QKeySequence& shortcut, Condition isAllowed,
                       std::function<void()> act) {
  all_.push_back(new Command(
      {.title = QString::fromUtf8(title),
       .shortcut = shortcut,
       .isAllowed = [&session = services_.session, isAllowed] { return isAllowed(session); },
       .act = std::move(act)},
      this));
}

void MenuCommands::add(const char* title, const QKeySequence& shortcut, Condition isAllowed,
                       void (ScanSession::*act)()) {
  add(title, shortcut, isAllowed, [&session = services_.session, act] { (session.*act)(); });
}

void MenuCommands::refresh() {
  for (Command* command : all_) command->refresh();
}

void MenuCommands::quit() {
  services_.quit();
}

QQmlListProperty<Command> MenuCommands::list() {
  return {
      this, &all_,
      [](QQmlListProperty<Command>* list) {
        return static_cast<qsizetype>(static_cast<std::vector<Command*>*>(list->data)->size());
      },
      [](QQmlListProperty<Command>* list, qsizetype index) {
        return (*static_cast<std::vector<Command*>*>(list->data))[static_cast<std::size_t>(index)];
      }};
}

}  // namespace tessaly
