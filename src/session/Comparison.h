// The comparison of a scanned tree with another folder.
//
// Main thread only.
#pragma once

#include <string>
#include <vector>

#include <QObject>

#include "scan/DiskNode.h"
#include "scan/FolderCompareRow.h"
#include "session/FieldChanges.h"
#include "session/Jobs.h"
#include "session/SessionServices.h"

namespace tessaly {

class Comparison : public QObject {
  Q_OBJECT

 public:
  // `services` and everything it refers to must outlive the comparison.
  explicit Comparison(const SessionServices& services)
      : services_(services), jobs_(services.dispatch) {}

  const std::vector<FolderCompareRow>& compareRows() const { return compareRows_; }
  const std::string& compareLeftName() const { return compareLeftName_; }
  const std::string& compareRightName() const { return compareRightName_; }
  // The names of the folders whose comparisons run, in the order of their starts.
  const std::vector<std::string>& comparing() const { return comparing_; }

  // Walks `folder` and compares it with `left`. The rows of an earlier comparison stay until then.
  // A scan or a later comparison does not cancel this one; the rows of the one that ends last are
  // shown.
  void compare(FieldChanges& changes, const DiskNode& left, const std::string& folder);

  // Cancels the walks without waiting for them.
  void end() { jobs_.end(); }

 signals:
  void compareRowsChanged();
  void compareNamesChanged();  // both names, which always change together
  void comparingChanged();

 private:
  const SessionServices& services_;
  Jobs jobs_;
  std::vector<FolderCompareRow> compareRows_;
  std::string compareLeftName_;
  std::string compareRightName_;
  std::vector<std::string> comparing_;
};

}  // namespace tessaly
