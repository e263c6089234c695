// The records that snapper and timeshift keep of their snapshots. Pure functions; any bytes may be
// given.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly::tools {

struct SnapshotRecord {
  std::string made;     // "2024-02-01 13:30:00 UTC"; empty if it is not recorded
  std::string purpose;  // any bytes, may be empty

  friend bool operator==(const SnapshotRecord&, const SnapshotRecord&) = default;
};

// snapper's info.xml of the snapshot `number`: an element "snapshot" with the elements "num",
// "date" (in UTC), "type", "description" and "cleanup". Absent if it is no record of that snapshot.
std::optional<SnapshotRecord> snapperRecord(std::string_view xml, std::uint64_t number);

// timeshift's info.json: an object of texts, with "created" (seconds since 1970), "tags" and
// "comments". Absent if it is no such record.
std::optional<SnapshotRecord> timeshiftRecord(std::string_view json);

// The value of `name` in a file of assignments as the shell reads them, such as SUBVOLUME="/". The
// last assignment counts; absent if there is none.
std::optional<std::string> shellValue(std::string_view text, std::string_view name);

// The text value of `name` in a JSON object; absent if there is none.
std::optional<std::string> jsonText(std::string_view json, std::string_view name);

// "2024-02-01 13:30:00 UTC" for a time in seconds since 1970 up to the year 9999, else empty.
std::string utcText(std::int64_t seconds);

}  // namespace tessaly::tools
