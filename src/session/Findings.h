// What the analysis of a finished scan has found. Each list of the analysis has its field here, and
// its stage stores it.
//
// Main thread only.
#pragma once

#include <QObject>

#include "platform/Dispatch.h"
#include "session/FieldChanges.h"
#include "session/Jobs.h"
#include "session/PostScanAnalysis.h"

namespace tessaly {

class Findings : public QObject {
  Q_OBJECT

 public:
  // `dispatch` outlives the findings.
  Findings(Dispatch& dispatch, PostScanAnalysis::Stages stages);

  // Runs all stages over `scan`. A newer scan does not make the pass void: the lists of the pass
  // that ends last stay.
  void analyse(PostScanAnalysis::FinishedScan scan);

  // Stops the passes without waiting for them.
  void end() { jobs_.end(); }

 private:
  PostScanAnalysis::Stages stages_;
  Jobs jobs_;
};

}  // namespace tessaly
