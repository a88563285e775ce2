// Strings tables: what was read, written out again, reads the same.
#include "nib_localizer/strings_table.h"
#include "input.h"
#include "require.h"

using namespace vireonix::fuzz;
using namespace vireonix::nibs;

namespace {

std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\')
      out += '\\';
    if (c == '\0')
      out += "\\U0000";
    else
      out += c;
  }
  return out + "\"";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto result = parseStrings(textOf(data, size));
  if (const auto* error = std::get_if<StringsError>(&result)) {
    require(error->line >= 1 && !error->reason.empty(), "an error has a line and a reason");
    return 0;
  }
  const auto& table = std::get<StringsTable>(result);
  std::string written;
  for (const auto& [key, value] : table)
    written += quoted(key) + " = " + quoted(value) + ";\n";
  const auto again = parseStrings(written);
  const auto* same = std::get_if<StringsTable>(&again);
  require(same != nullptr && *same == table, "a table that was written reads as itself");
  return 0;
}
