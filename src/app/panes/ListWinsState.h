// The page of what can be won back: its rows, what is ticked, and its actions. It lives as long as
// the page is shown; a move to the Trash that it has started goes on without it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "app/model/PathHandle.h"
#include "app/panes/ListWinsModel.h"
#include "session/Jobs.h"
#include "session/ScanSession.h"
#include "session/WinsPass.h"

namespace tessaly {

class ListWinsState : public QObject {
  Q_OBJECT
  QML_ELEMENT
  QML_UNCREATABLE("The program makes it and hands it to its view.")
  Q_PROPERTY(tessaly::ListWinsModel* rows READ rows CONSTANT)
  // A pass runs. The first one starts with the page.
  Q_PROPERTY(bool loading READ isLoading NOTIFY loadingChanged)
  Q_PROPERTY(QString titleText READ titleText NOTIFY findsChanged)
  Q_PROPERTY(bool hasProbes READ hasProbes NOTIFY findsChanged)
  // Empty if there are no snapshots.
  Q_PROPERTY(QString snapshotText READ snapshotText NOTIFY findsChanged)
  Q_PROPERTY(bool hasPicked READ hasPicked NOTIFY pickedChanged)
  Q_PROPERTY(QString pickText READ pickText NOTIFY pickedChanged)
  // The texts of the two banners; empty for none.
  Q_PROPERTY(QString freedText READ freedText NOTIFY bannersChanged)
  Q_PROPERTY(QString errorText READ errorText NOTIFY bannersChanged)
  // A batch moves to the Trash, whoever has started it; it has been stopped.
  Q_PROPERTY(bool moving READ isMoving NOTIFY movingChanged)
  Q_PROPERTY(bool stopping READ isStopping NOTIFY movingChanged)
  // The button that moves: what it would move, or how far the batch is.
  Q_PROPERTY(QString moveText READ moveText NOTIFY moveTextChanged)
  Q_PROPERTY(bool thinning READ isThinning NOTIFY workChanged)
  Q_PROPERTY(bool emptying READ isEmptying NOTIFY workChanged)

 public:
  // Empty folders after this many are not shown.
  static constexpr std::size_t mostEmptyFolders = 40;
  // The longest answer of a tool that is shown, in characters.
  static constexpr std::size_t longestAnswer = 180;

  // Starts a pass. `session` must outlive it.
  explicit ListWinsState(ScanSession& session, QObject* parent = nullptr);

  ListWinsModel* rows() { return &rows_; }
  bool isLoading() const { return isLoading_; }
  QString titleText() const;
  bool hasProbes() const { return !found_.finds.probes.empty(); }
  QString snapshotText() const;
  bool hasPicked() const { return !picked_.empty(); }
  QString pickText() const;
  QString freedText() const { return freedText_; }
  QString errorText() const { return errorText_; }
  bool isMoving() const { return session_.removal().isMoving(); }
  bool isStopping() const;
  QString moveText() const;
  bool isThinning() const { return isThinning_; }
  bool isEmptying() const { return isEmptying_; }

  // Starts a pass. A running one continues; the one that ends last is shown.
  Q_INVOKABLE void load();
  // Ticks or unticks a row. An item that is no longer there can only be unticked. Does nothing
  // while a batch moves.
  Q_INVOKABLE void toggle(const tessaly::PathHandle& path);
  // Unticks all rows if any is ticked; otherwise ticks all that can be moved, including the empty
  // folders that are not shown.
  Q_INVOKABLE void toggleAll();
  // Moves what is ticked to the Trash.
  Q_INVOKABLE void trashSelected();
  Q_INVOKABLE void stop();
  Q_INVOKABLE void showOnMap(const tessaly::PathHandle& path);
  // Shows the item in the program that manages files.
  Q_INVOKABLE void reveal(const tessaly::PathHandle& path);
  // Asks the system to give up snapshots.
  Q_INVOKABLE void thin();
  // Empties the Trash at once, without a question.
  Q_INVOKABLE void emptyTrash();

 signals:
  void loadingChanged();
  void findsChanged();
  void pickedChanged();
  void bannersChanged();
  void movingChanged();
  void moveTextChanged();
  void workChanged();

 private:
  using BytesOf = std::unordered_map<std::string, std::int64_t>;

  void observe();
  void take(WinsPass::Found found);
  void showRows();
  void setPicked(std::set<std::string> picked);
  void takeMoved(const TrashBatch::Moved& moved, const BytesOf& bytesOf);
  bool isTrash(const ReclaimItem& item) const;
  bool isGone(const std::string& path) const;
  // Those of the scan that have no entries.
  std::vector<DiskNode> emptyFolders() const;
  // For each ticked path the bytes of all rows with it; 0 for an empty folder.
  BytesOf bytesOfPicked() const;
  std::int64_t totalBytes() const;

  ScanSession& session_;
  ListWinsModel rows_;
  WinsPass::Found found_;
  // Each item as it was seen last, including those that later passes did not find.
  std::unordered_map<std::string, WinsPass::Sighting> seen_;
  std::set<std::string> picked_;
  QString freedText_;
  QString errorText_;
  bool isLoading_ = false;
  bool isThinning_ = false;
  bool isEmptying_ = false;
  bool movesOwnBatch_ = false;
  Jobs jobs_;
};

}  // namespace tessaly
