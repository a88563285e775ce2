#include "nib_localizer/localize.h"

#include "nib_localizer/pseudo_locale.h"
#include "nib_localizer/strings_table.h"
#include "nib_localizer/xib_document.h"

#include <fstream>
#include <iterator>

namespace vireonix::nibs {
namespace {

std::variant<StringsTable, Failure> readTable(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in)
    return Failure{file.string() + ": cannot be read"};
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  auto parsed = parseStrings(text);
  if (const auto* error = std::get_if<StringsError>(&parsed))
    return Failure{file.string() + ":" + std::to_string(error->line) + ": " + error->reason};
  return std::get<StringsTable>(std::move(parsed));
}

std::string missingTexts(const XibDocument& document, const StringsTable& table, const Job& job) {
  std::set<std::string> missing;
  for (const std::string& text : document.texts()) {
    if (!table.contains(text) && !job.untranslatable.contains(text))
      missing.insert(text);
  }
  std::string lines;
  for (const std::string& text : missing)
    lines += (lines.empty() ? "" : "\n") + job.strings->string() + ": no key \"" + text +
             "\", which " + job.xib.filename().string() + " shows";
  return lines;
}

} // namespace

std::variant<std::string, Failure> localize(const Job& job) {
  auto document = XibDocument::read(job.xib);
  if (!document)
    return Failure{job.xib.string() + ": not an Interface Builder document"};
  if (job.strings) {
    auto table = readTable(*job.strings);
    if (auto* failure = std::get_if<Failure>(&table))
      return std::move(*failure);
    const auto& translations = std::get<StringsTable>(table);
    if (std::string lines = missingTexts(*document, translations, job); !lines.empty())
      return Failure{std::move(lines)};
    document->translate([&](const std::string& text) {
      const auto found = translations.find(text);
      return found != translations.end() ? found->second : text;
    });
  } else {
    document->translate(pseudoTranslation);
  }
  if (job.platform == Platform::Gnustep)
    document->adaptToGnustep();
  return document->xml();
}

} // namespace vireonix::nibs
