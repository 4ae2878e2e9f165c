// Input: a parameter, machine, order and freight rate file with lines "%%" between them. Whatever
// they hold, every finding of the checker lies in its file, on a line that is there and within it,
// has words, and mends bytes that are there; all of them together mend the files.

#include <algorithm>
#include <vector>

#include "check.h"
#include "checks/mending.h"
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
  std::size_t end = 0;
  std::vector<checks::Edit> edits = finding.edits;
  std::sort(edits.begin(), edits.end(),
            [](const checks::Edit &a, const checks::Edit &b) { return a.begin < b.begin; });
  for (const checks::Edit &edit : edits) {
    require(edit.begin >= end && edit.begin <= edit.end, "edits beside each other");
    end = edit.end;
  }
  require(end <= finding.file->bytes().size(), "an edit of bytes");
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
  checks::Mender mender(true);
  checks::FindingSink sink(selection, requireSoundFinding,
                           [&](const checks::Finding &finding) { mender.take(finding); });
  checks::CheckedMill mill;
  const std::filesystem::path folder = "/nowhere";
  require(checks::checkMill(checks::namedPath(QStringLiteral("Parameters.data"), folder), folder,
                            read, sink, mill),
          "a mill that could be read");
  for (const checks::SourceFile &file : mill.files) {
    require(mender.count() > 0 || mender.mended(file) == file.bytes(), "nothing mended");
  }
  return 0;
}
