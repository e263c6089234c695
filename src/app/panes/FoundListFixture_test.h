// The state object of a list of the analysis, over a session whose engine finds what a test says.
// The model of its rows is checked at each change.
#pragma once

#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <QAbstractItemModelTester>

#include "app/model/NodeHandle.h"
#include "session/SessionFixture_test.h"

namespace tessaly {

template <class State, class Row>
class FoundListFixture : public SessionFixture {
 protected:
  using Engine = PostScanAnalysis::Engine<Row>;
  using Model = std::remove_pointer_t<decltype(std::declval<State>().rows())>;

  // A fixture with other engines sets them and calls start().
  FoundListFixture() = default;
  explicit FoundListFixture(Engine PostScanAnalysis::Engines::*engine) {
    analysis_.*engine = [this](const auto&, const auto&) { return found_; };
    start();
  }

  void start() {
    restart();
    state_ = std::make_unique<State>(session());
    tester_ = std::make_unique<QAbstractItemModelTester>(
        state_->rows(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  }
  // Of what is found, the scanned tree has the file /r/in/café alone, in Latin-1.
  void find(std::vector<Row> rows) {
    found_ = std::move(rows);
    scanTo(folder("/r", 60, {folder("/r/in", 30, {file("/r/in/caf\xe9", 30)})}));
  }
  std::vector<std::string> column(int role) const {
    std::vector<std::string> texts;
    for (int row = 0; row < state_->rows()->rowCount(); ++row)
      texts.push_back(at(row, role).toString().toStdString());
    return texts;
  }
  NodeHandle node(int row) const { return at(row, Model::NodeRole).template value<NodeHandle>(); }

  std::vector<Row> found_;
  std::unique_ptr<State> state_;

 private:
  QVariant at(int row, int role) const {
    return state_->rows()->data(state_->rows()->index(row), role);
  }

  std::unique_ptr<QAbstractItemModelTester> tester_;
};

}  // namespace tessaly
