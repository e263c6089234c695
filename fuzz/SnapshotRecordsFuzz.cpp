#include <optional>
#include <string>

#include "Target.h"
#include "platform/tools/SnapshotRecords.h"

namespace tessaly::fuzz {

namespace {

using tools::SnapshotRecord;

void requireRecord(const std::optional<SnapshotRecord>& record, std::size_t input) {
  if (!record) return;
  require(
      record->made.empty() || record->made.size() == std::string("2024-02-01 13:30:00 UTC").size(),
      "a time has one form");
  require(record->purpose.size() <= 2 * input + 2, "a purpose is no longer than its record");
}

}  // namespace

void tryInput(std::string_view input) {
  requireRecord(tools::snapperRecord(input, 1), input.size());
  requireRecord(tools::timeshiftRecord(input), input.size());
  const std::string inside =
      "<snapshot><num>1</num><description>" + std::string(input) + "</description></snapshot>";
  require(tools::snapperRecord(inside, 1).has_value(), "a description is any text");

  const auto value = tools::shellValue(input, "SUBVOLUME");
  require(!value || value->find('\n') == std::string::npos, "a value is in one line");
  require(!value || input.find("SUBVOLUME=") != std::string_view::npos, "a value was assigned");
  if (input.find_first_of("\"\n\\") == std::string_view::npos) {
    const std::string assigned = "SUBVOLUME=\"" + std::string(input) + "\"\n";
    require(tools::shellValue(assigned, "SUBVOLUME") == input, "an assigned value is read");
  }
  tools::jsonText(input, "backup_device_uuid");
}

}  // namespace tessaly::fuzz
