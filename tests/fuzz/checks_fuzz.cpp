// Input: a parameter, machine, order and freight rate file with lines "%%" between them. Whatever
// they hold, every finding of the checker lies in its file, on a line that is there and within it,
// has words, and mends bytes that are there.

#include "check.h"
#include "checks/mill_check.h"
#include "target.h"

using namespace corvane;

namespace {

using corvane::fuzz::require;

void requireSoundFinding(const checks::Finding &finding) {
  require(finding.file != nullptr, "a file");
  require(finding.line <= finding.file->lineCount(), "a line that is there");
  const std::string_view line = finding.file->line(finding.line);
  require(finding.offset <= line.size() && finding.length <= line.size() - finding.offset,
          "a place in the line");
  require(checks::columnOf(finding) >= 1 && checks::widthOf(finding) >= 1, "a mark");
  require(!checks::messageOf(finding).empty(), "words");
  for (const checks::Edit &edit : finding.edits) {
    require(edit.begin <= edit.end && edit.end <= finding.file->bytes().size(), "an edit of bytes");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  std::string_view rest = corvane::fuzz::textOf(data, size);
  // The files are asked for one after the other, the parameter file first.
  const auto read = [&rest](const checks::NamedPath & /*path*/, std::string &bytes) {
    bytes = corvane::fuzz::takePart(rest);
    return true;
  };
  checks::Selection selection;
  selection.level = checks::Severity::kNote;
  checks::FindingSink sink(selection, requireSoundFinding, {});
  checks::CheckedMill mill;
  const std::filesystem::path folder = "/nowhere";
  require(checks::checkMill(checks::namedPath(QStringLiteral("Parameters.data"), folder), folder,
                            read, sink, mill),
          "a mill that could be read");
  return 0;
}
