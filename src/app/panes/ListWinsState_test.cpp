#include "app/panes/ListWinsState.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "app/model/NodeHandle.h"
#include "app/panes/WinsFixture_test.h"
#include "support/PlainFiles.h"

namespace tessaly {
namespace {

using testing::ElementsAre;

class ListWins : public WinsFixture {
 protected:
  ListWins() { followTrash(); }

  // Opens the page, and ends its first pass.
  ListWinsState& open() {
    state_ = std::make_unique<ListWinsState>(session());
    tester_ = std::make_unique<QAbstractItemModelTester>(
        state_->rows(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    finish();
    return *state_;
  }
  std::vector<std::string> column(int role) {
    std::vector<std::string> texts;
    for (int row = 0; row < state_->rows()->rowCount(); ++row)
      texts.push_back(
          state_->rows()->data(state_->rows()->index(row), role).toString().toStdString());
    return texts;
  }
  void tick(const std::string& path) { state_->toggle(PathHandle(path)); }
  bool isOnDisk(const std::string& path) const { return machine_.trash.has(path); }

  std::unique_ptr<ListWinsState> state_;
  std::unique_ptr<QAbstractItemModelTester> tester_;
};

using Model = ListWinsModel;

TEST_F(ListWins, the_page_analyses_when_it_opens) {
  addCache("pip", 3 * mega);
  state_ = std::make_unique<ListWinsState>(session());
  EXPECT_TRUE(state_->isLoading());
  EXPECT_EQ(state_->rows()->rowCount(), 0);
  finish();
  EXPECT_FALSE(state_->isLoading());
  EXPECT_EQ(state_->rows()->rowCount(), 1);
}

TEST_F(ListWins, without_any_find_the_page_says_so) {
  open();
  EXPECT_EQ(state_->titleText(), "Up to ~0 B reclaimable");
  EXPECT_FALSE(state_->hasProbes());
  EXPECT_EQ(state_->snapshotText(), "");
  state_->toggleAll();
  EXPECT_FALSE(state_->hasPicked());
  EXPECT_EQ(state_->pickText(), "Select All");
}

TEST_F(ListWins, sections_follow_each_other_and_categories_are_in_alphabetical_order) {
  addCache("pip", 9 * mega);
  addCache("npm", 8 * mega);
  addWin("venv", 7 * mega, "Python virtualenvs");
  addWin("node_modules", 6 * mega, "node_modules");
  addWin(".venv", 5 * mega, "Python virtualenvs");
  addFile("film", 4 * mega);
  open();
  EXPECT_THAT(column(Model::TitleRole),
              ElementsAre("pip cache", "npm cache", "venv", ".venv", "node_modules", "film"));
  EXPECT_THAT(column(Model::SectionRole), ElementsAre("Caches & developer junk", "", "In this scan",
                                                      "", "", "Large files unused 30+ days"));
  EXPECT_THAT(column(Model::CategoryRole),
              ElementsAre("", "", "Python virtualenvs", "", "node_modules", ""));
  EXPECT_THAT(column(Model::SizeRole),
              ElementsAre("9.0 MB", "8.0 MB", "7.0 MB", "5.0 MB", "6.0 MB", "4.0 MB"));
  EXPECT_EQ(column(Model::NoteRole)[5], disk_.at("film"));
  EXPECT_EQ(state_->titleText(), "Up to ~39.0 MB reclaimable");
}

TEST_F(ListWins, select_all_ticks_rows_of_caution_and_not_the_trash) {
  const std::string pip = addCache("pip", mega);
  const std::string photos = addCache("photos", 5 * mega, true);
  addTrash(7 * mega);
  open();
  EXPECT_EQ(state_->titleText(), "Up to ~13.0 MB reclaimable");
  state_->toggleAll();
  EXPECT_EQ(state_->moveText(), "Move 2 to Trash · 6.0 MB");
  EXPECT_THAT(column(Model::PickedRole), ElementsAre("true", "true", "false"));
  EXPECT_THAT(column(Model::CautionRole), ElementsAre("false", "true", "false"));
  EXPECT_THAT(column(Model::TrashActionRole), ElementsAre("false", "false", "true"));
}

TEST_F(ListWins, of_41_empty_folders_40_are_shown_and_all_are_selected) {
  std::vector<std::string> names;
  for (int i = 0; i < 41; ++i) names.push_back("empty" + std::to_string(100 + i));
  scanEmpty(names);
  open();
  EXPECT_EQ(state_->rows()->rowCount(), 40);
  EXPECT_EQ(column(Model::SectionRole)[0], "Empty folders");
  state_->toggleAll();
  EXPECT_EQ(state_->moveText(), "Move 41 to Trash · 0 B");
  EXPECT_EQ(state_->titleText(), "Up to ~0 B reclaimable");
}

TEST_F(ListWins, a_folder_with_files_too_small_for_the_tree_is_no_empty_folder) {
  scanEmpty({"empty", "keys"});
  putFile(disk_.at("keys/id"), "secret");
  open();
  EXPECT_THAT(column(Model::TitleRole), ElementsAre("empty"));
  state_->toggleAll();
  EXPECT_EQ(state_->moveText(), "Move 1 to Trash · 0 B");
}

TEST_F(ListWins, an_empty_folder_that_has_been_filled_meanwhile_stays) {
  scanEmpty({"empty"});
  open();
  state_->toggleAll();
  putFile(disk_.at("empty/photo"), "new");
  state_->trashSelected();
  finish();
  EXPECT_TRUE(isOnDisk(disk_.at("empty")));
  EXPECT_EQ(state_->errorText(), "1 item(s) couldn't be moved to Trash.");
}

TEST_F(ListWins, deselect_unticks_a_single_row_and_the_next_press_selects_all) {
  const std::string pip = addCache("pip", mega);
  addCache("npm", mega);
  open();
  tick(pip);
  EXPECT_EQ(state_->pickText(), "Deselect");
  EXPECT_EQ(state_->moveText(), "Move 1 to Trash · 1.0 MB");
  state_->toggleAll();
  EXPECT_FALSE(state_->hasPicked());
  state_->toggleAll();
  EXPECT_EQ(state_->moveText(), "Move 2 to Trash · 2.0 MB");
  tick(pip);
  EXPECT_EQ(state_->moveText(), "Move 1 to Trash · 1.0 MB");
}

TEST_F(ListWins, snapshots_are_counted) {
  finds_.snapshots = 1;
  open();
  EXPECT_EQ(state_->snapshotText(), "1 local snapshot");
  finds_.snapshots = 2;
  state_->load();
  finish();
  EXPECT_EQ(state_->snapshotText(), "2 local snapshots");
}

TEST_F(ListWins, the_ticked_items_move_and_the_banner_counts_them) {
  const std::string pip = addCache("pip", 3 * mega);
  const std::string film = addFile("film", 2 * mega);
  const std::string npm = addCache("npm", mega);
  open();
  tick(pip);
  tick(film);
  state_->trashSelected();
  EXPECT_TRUE(state_->isMoving());
  EXPECT_EQ(state_->moveText(), "Moving… 0 of 2");
  finds_ = {};
  finish();
  EXPECT_FALSE(isOnDisk(pip));
  EXPECT_FALSE(isOnDisk(film));
  EXPECT_TRUE(isOnDisk(npm));
  EXPECT_EQ(state_->freedText(), "Moved 2 item(s) to Trash — freed ~5.0 MB.");
  EXPECT_EQ(state_->errorText(), "");
  EXPECT_FALSE(state_->hasPicked());
  EXPECT_EQ(passes_, 2);
  EXPECT_EQ(session().removal().lastTrashed().size(), 2U);
}

TEST_F(ListWins, a_failure_is_counted_in_its_own_banner_and_its_bytes_as_tried) {
  const std::string pip = addCache("pip", 3 * mega);
  const std::string npm = addCache("npm", mega);
  refuse(npm);
  open();
  state_->toggleAll();
  state_->trashSelected();
  finish();
  EXPECT_EQ(state_->freedText(), "Moved 1 item(s) to Trash — freed ~4.0 MB.");
  EXPECT_EQ(state_->errorText(), "1 item(s) couldn't be moved to Trash.");
  EXPECT_FALSE(state_->hasPicked());
  // A later success leaves the banner.
  finds_.probes.erase(finds_.probes.begin());
  const std::string hf = addCache("hf", mega);
  state_->load();
  finish();
  tick(hf);
  state_->trashSelected();
  finish();
  EXPECT_EQ(state_->freedText(), "Moved 1 item(s) to Trash — freed ~1.0 MB.");
  EXPECT_EQ(state_->errorText(), "1 item(s) couldn't be moved to Trash.");
}

TEST_F(ListWins, rows_that_a_stop_has_left_out_stay_ticked) {
  const std::string a = addCache("a", 4 * mega);
  const std::string b = addCache("b", 2 * mega);
  const std::string c = addCache("c", mega);
  open();
  state_->toggleAll();
  duringMove_ = [&](const std::string& path) {
    if (path == b) state_->stop();
  };
  state_->trashSelected();
  machine_.dispatch.drain(Dispatch::Queue::userInitiated);
  EXPECT_TRUE(state_->isStopping());
  finds_.probes.erase(finds_.probes.begin(), finds_.probes.begin() + 2);
  finish();
  EXPECT_TRUE(isOnDisk(c));
  EXPECT_EQ(state_->freedText(), "Moved 2 item(s) to Trash — freed ~6.0 MB.");
  EXPECT_EQ(state_->moveText(), "Move 1 to Trash · 1.0 MB");
  EXPECT_EQ(session().removal().lastTrashed().size(), 2U);
}

TEST_F(ListWins, ticks_cannot_change_while_a_batch_moves) {
  const std::string a = addCache("a", 4 * mega);
  const std::string b = addCache("b", 2 * mega);
  open();
  tick(a);
  state_->trashSelected();
  tick(b);
  state_->toggleAll();
  EXPECT_THAT(column(Model::PickedRole), ElementsAre("true", "false"));
  finish();
}

TEST_F(ListWins, a_pass_changes_no_tick) {
  const std::string a = addCache("a", 4 * mega);
  open();
  tick(a);
  finds_.probes[0].bytes = 5 * mega;
  state_->load();
  finish();
  EXPECT_EQ(state_->moveText(), "Move 1 to Trash · 5.0 MB");
}

TEST_F(ListWins, of_two_passes_the_one_that_ends_last_is_shown) {
  open();
  addCache("old", mega);
  state_->load();
  const Dispatch::Work slow = machine_.dispatch.take(Dispatch::Queue::userInitiated);
  finds_ = {};
  addCache("new", mega);
  state_->load();
  finish();
  EXPECT_FALSE(state_->isLoading());
  EXPECT_THAT(column(Model::TitleRole), ElementsAre("new cache"));
  finds_ = {};
  addCache("late", mega);
  slow();
  finish();
  EXPECT_THAT(column(Model::TitleRole), ElementsAre("late cache"));
}

TEST_F(ListWins, a_cache_that_has_grown_since_the_pass_moves) {
  const std::string pip = addCache("pip", 3 * mega);
  open();
  tick(pip);
  putFile(pip + "/wheel", "new");
  state_->trashSelected();
  finish();
  EXPECT_FALSE(isOnDisk(pip));
  EXPECT_EQ(state_->freedText(), "Moved 1 item(s) to Trash — freed ~3.0 MB.");
}

TEST_F(ListWins, an_item_that_another_program_has_replaced_stays) {
  const std::string film = addFile("film", 3 * mega);
  open();
  tick(film);
  putFile(film, "of today");
  state_->trashSelected();
  finish();
  EXPECT_TRUE(isOnDisk(film));
  EXPECT_EQ(contentOf(film), "of today");
  EXPECT_EQ(state_->errorText(), "1 item(s) couldn't be moved to Trash.");
}

TEST_F(ListWins, an_item_that_has_vanished_is_a_failure) {
  const std::string film = addFile("film", 3 * mega);
  open();
  tick(film);
  vanish(film);
  state_->trashSelected();
  finds_ = {};
  finish();
  EXPECT_EQ(state_->freedText(), "Moved 0 item(s) to Trash — freed ~3.0 MB.");
  EXPECT_EQ(state_->errorText(), "1 item(s) couldn't be moved to Trash.");
}

TEST_F(ListWins, a_moved_folder_of_the_tree_cannot_be_ticked_until_it_is_put_back) {
  const std::string modules = addWin("node_modules", 6 * mega, "node_modules");
  open();
  tick(modules);
  state_->trashSelected();
  finish();
  EXPECT_THAT(column(Model::TickableRole), ElementsAre("false"));
  EXPECT_EQ(state_->titleText(), "Up to ~0 B reclaimable");
  tick(modules);
  EXPECT_FALSE(state_->hasPicked());
  state_->toggleAll();
  EXPECT_FALSE(state_->hasPicked());
  session().undoTrash();
  disk_.plant("node_modules/\n");
  finish();
  EXPECT_THAT(column(Model::TickableRole), ElementsAre("true"));
  EXPECT_EQ(state_->titleText(), "Up to ~6.0 MB reclaimable");
}

TEST_F(ListWins, a_finished_scan_starts_a_pass_with_its_tree) {
  scanEmpty({"empty"});
  open();
  const int before = passes_;
  session().rescan();
  finish();
  EXPECT_GT(passes_, before);
}

TEST_F(ListWins, a_pass_looks_at_the_tree_from_its_root_and_at_none_without_a_scan) {
  open();
  EXPECT_EQ(passes_, 1);
  EXPECT_EQ(treeOfPass_, "");
  scanEmpty({"empty"});
  session().open(session().navigation().current()->children()[0]);
  state_->load();
  finish();
  EXPECT_EQ(treeOfPass_, disk_.path());
}

TEST_F(ListWins, a_scan_of_another_folder_starts_a_pass_before_it_ends) {
  scanEmpty({"empty"});
  open();
  const int before = passes_;
  machine_.dispatch.drain(Dispatch::Queue::main);
  session().scan(disk_.at("empty"));
  EXPECT_TRUE(state_->isLoading());
  const Dispatch::Work walk = machine_.dispatch.take(Dispatch::Queue::userInitiated);
  machine_.dispatch.drain(Dispatch::Queue::userInitiated);
  EXPECT_GT(passes_, before);
  walk();
  finish();
}

TEST_F(ListWins, a_ticked_item_that_is_gone_can_be_unticked) {
  const std::string modules = addWin("node_modules", mega, "node_modules");
  open();
  tick(modules);
  vanish(modules);
  state_->load();
  finish();
  EXPECT_THAT(column(Model::TickableRole), ElementsAre("true"));
  tick(modules);
  EXPECT_FALSE(state_->hasPicked());
  EXPECT_THAT(column(Model::TickableRole), ElementsAre("false"));
}

TEST_F(ListWins, a_put_back_ends_in_a_pass) {
  const std::string pip = addCache("pip", mega);
  open();
  tick(pip);
  state_->trashSelected();
  finish();
  const int before = passes_;
  session().undoTrash();
  finish();
  EXPECT_GT(passes_, before);
}

TEST_F(ListWins, a_page_that_opens_during_a_batch_shows_its_progress_and_loads_at_its_end) {
  const std::string pip = addCache("pip", mega);
  open();
  tick(pip);
  state_->trashSelected();
  tester_.reset();
  state_ = std::make_unique<ListWinsState>(session());
  EXPECT_EQ(state_->moveText(), "Moving… 0 of 1");
  finish();
  EXPECT_FALSE(isOnDisk(pip));
  EXPECT_EQ(state_->freedText(), "");
  EXPECT_FALSE(state_->isMoving());
  EXPECT_EQ(passes_, 3);
}

TEST_F(ListWins, a_batch_goes_on_when_the_page_closes) {
  const std::string a = addCache("a", mega);
  const std::string b = addCache("b", mega);
  open();
  state_->toggleAll();
  duringMove_ = [&](const std::string&) {
    tester_.reset();
    state_.reset();
  };
  state_->trashSelected();
  finish();
  EXPECT_FALSE(isOnDisk(a));
  EXPECT_FALSE(isOnDisk(b));
  EXPECT_EQ(session().removal().lastTrashed().size(), 2U);
}

TEST_F(ListWins, the_result_of_a_pass_is_dropped_when_the_page_is_closed) {
  bool wasCancelled = false;
  duringPass_ = [&](const WinsPass::IsCancelled& isCancelled) {
    state_.reset();
    wasCancelled = isCancelled();
  };
  state_ = std::make_unique<ListWinsState>(session());
  finish();
  EXPECT_TRUE(wasCancelled);
}

TEST_F(ListWins, quitting_cancels_the_pass) {
  bool wasCancelled = false;
  duringPass_ = [&](const WinsPass::IsCancelled& isCancelled) {
    session().end();
    wasCancelled = isCancelled();
  };
  state_ = std::make_unique<ListWinsState>(session());
  finish();
  EXPECT_TRUE(wasCancelled);
  EXPECT_TRUE(state_->isLoading());
}

TEST_F(ListWins, the_trash_is_emptied_once_and_its_bytes_are_told) {
  addTrash(7 * mega);
  open();
  state_->emptyTrash();
  EXPECT_TRUE(state_->isEmptying());
  state_->emptyTrash();
  finds_ = {};
  finish();
  EXPECT_EQ(emptyings_, 1);
  EXPECT_FALSE(state_->isEmptying());
  EXPECT_EQ(state_->freedText(), "Emptied Trash — freed ~7.0 MB.");
  EXPECT_EQ(passes_, 2);
}

TEST_F(ListWins, the_trash_is_not_emptied_while_a_batch_moves) {
  addTrash(7 * mega);
  const std::string pip = addCache("pip", mega);
  open();
  tick(pip);
  state_->trashSelected();
  state_->emptyTrash();
  EXPECT_FALSE(state_->isEmptying());
  finish();
  EXPECT_EQ(emptyings_, 0);
}

TEST_F(ListWins, thinning_shows_the_answer_or_that_it_was_asked_for) {
  open();
  state_->thin();
  EXPECT_TRUE(state_->isThinning());
  state_->thin();
  finish();
  EXPECT_EQ(thinnings_, 1);
  EXPECT_EQ(state_->freedText(), "Asked the system to thin local snapshots (up to 20 GB).");
  EXPECT_EQ(passes_, 2);
  answer_ = std::string(179, 'x') + "e\u0301" + std::string(120, 'y') + "\n";
  state_->thin();
  finish();
  EXPECT_EQ(state_->freedText(), QString::fromStdString(std::string(179, 'x') + "e\u0301"));
  answer_ = "Run: sudo thin\n";
  state_->thin();
  finish();
  EXPECT_EQ(state_->freedText(), "Run: sudo thin");
}

TEST_F(ListWins, a_row_is_shown_on_the_map_or_in_the_file_manager) {
  const std::string film = addFile("film", mega);
  open();
  state_->reveal(PathHandle(film));
  EXPECT_THAT(machine_.workspace.revealed, ElementsAre(ElementsAre(film)));
  state_->showOnMap(PathHandle(film));
  // Without a tree the map cannot show it.
  EXPECT_EQ(machine_.workspace.revealed.size(), 2U);
}

TEST_F(ListWins, commands_act_on_every_row_but_the_trash_and_what_is_gone) {
  const std::string film = addFile("film", mega);
  addTrash(mega);
  const std::string modules = addWin("node_modules", mega, "node_modules");
  vanish(modules);
  open();
  const auto node = [&](int row) {
    return state_->rows()->data(state_->rows()->index(row), Model::NodeRole).value<NodeHandle>();
  };
  ASSERT_THAT(column(Model::TitleRole), ElementsAre("Trash", "node_modules", "film"));
  EXPECT_FALSE(node(0).isValid());
  EXPECT_FALSE(node(1).isValid());
  ASSERT_TRUE(node(2).isValid());
  EXPECT_EQ(node(2).node()->path(), film);
}

TEST_F(ListWins, rows_keep_their_place_for_views_when_they_change) {
  const std::string a = addCache("a", 4 * mega);
  addCache("b", 3 * mega);
  open();
  const QSignalSpy resets(state_->rows(), &QAbstractItemModel::modelReset);
  const QPersistentModelIndex b = state_->rows()->index(1);
  finds_.probes.erase(finds_.probes.begin());
  state_->load();
  finish();
  EXPECT_EQ(b.row(), 0);
  EXPECT_THAT(column(Model::SectionRole), ElementsAre("Caches & developer junk"));
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(ListWins, the_whole_row_is_told_to_assistive_tools) {
  addCache("photos", 5 * mega, true);
  open();
  EXPECT_THAT(column(Model::LabelRole), ElementsAre("photos cache, caution, 5.0 MB, Made again"));
}

}  // namespace
}  // namespace tessaly
