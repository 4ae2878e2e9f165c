#include "checks/mending.h"

#include <QSaveFile>
#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

namespace corvane::checks {

namespace fs = std::filesystem;

namespace {

bool meet(const Edit &a, const Edit &b) {
  return a.begin < b.end && b.begin < a.end;
}

bool isFree(const std::multimap<std::size_t, Edit> &taken, const Edit &edit) {
  const auto behind = taken.lower_bound(edit.begin);
  const bool meetsNext = behind != taken.end() && meet(behind->second, edit);
  const bool meetsLast = behind != taken.begin() && meet(std::prev(behind)->second, edit);
  const bool isSame = behind != taken.end() && behind->first == edit.begin;
  return !meetsNext && !meetsLast && !isSame;
}

fs::path targetOf(const fs::path &path, const fs::path &folder) {
  const fs::path base = folder.empty() ? fs::path(".") : folder;
  const fs::path relative = path.lexically_normal().lexically_relative(base.lexically_normal());
  const bool isBelow = !relative.empty() && *relative.begin() != "..";
  return isBelow ? relative : path.filename();
}

std::string write(const fs::path &path, const std::string &bytes) {
  std::error_code error;
  fs::create_directories(path.parent_path(), error);
  // A new file that takes the name at the end: whatever had the name before is not written into.
  QSaveFile file(QString::fromStdString(path.string()));
  const bool isWritten = file.open(QIODevice::WriteOnly) &&
                         file.write(bytes.data(), static_cast<qint64>(bytes.size())) ==
                             static_cast<qint64>(bytes.size()) &&
                         file.commit();
  return isWritten ? "" : "could not write " + path.string();
}

}  // namespace

void Mender::take(const Finding &finding) {
  const bool isWanted =
      finding.fixKind == FixKind::kSafe || (unsafeToo_ && finding.fixKind == FixKind::kUnsafe);
  if (!isWanted || finding.edits.empty()) {
    return;
  }
  auto &taken = edits_[finding.file];
  const auto changes = [&](const Edit &edit) {
    return finding.file->bytes().substr(edit.begin, edit.end - edit.begin) != edit.replacement;
  };
  if (!std::all_of(finding.edits.begin(), finding.edits.end(),
                   [&](const Edit &edit) { return isFree(taken, edit) && changes(edit); })) {
    return;
  }
  for (const Edit &edit : finding.edits) {
    taken.emplace(edit.begin, edit);
  }
  ++count_;
}

std::string Mender::mended(const SourceFile &file) const {
  const auto edits = edits_.find(&file);
  if (edits == edits_.end()) {
    return std::string(file.bytes());
  }
  std::string bytes;
  std::size_t at = 0;
  for (const auto &[begin, edit] : edits->second) {
    bytes += file.bytes().substr(at, begin - at);
    bytes += edit.replacement;
    at = edit.end;
  }
  return bytes += file.bytes().substr(at);
}

MendedMill mendMill(const NamedPath &parameterFile, const fs::path &folder,
                    const Selection &selection, bool unsafeToo) {
  constexpr int kMostRounds = 10;
  std::unordered_map<std::string, std::string> mended;
  const auto read = [&](const NamedPath &path, std::string &bytes) {
    const auto known = mended.find(path.path.string());
    if (known == mended.end()) {
      return readBytes(path.path.string(), bytes);
    }
    bytes = known->second;
    return true;
  };
  MendedMill result;
  for (int round = 0; round < kMostRounds; ++round) {
    Mender mender(unsafeToo);
    FindingSink sink(
        selection, [](const Finding & /*finding*/) {},
        [&](const Finding &finding) { mender.take(finding); });
    CheckedMill mill;
    if (!checkMill(parameterFile, folder, read, sink, mill)) {
      break;
    }
    result.files.clear();
    for (std::size_t i = 0; i < mill.files.size(); ++i) {
      std::string bytes = mender.mended(mill.files[i]);
      mended[mill.paths[i].path.string()] = bytes;
      result.files.push_back({mill.paths[i], std::move(bytes)});
    }
    result.left = sink.totals();
    result.mended += mender.count();
    if (mender.count() == 0) {
      break;
    }
  }
  return result;
}

std::string writeMended(const MendedMill &mill, const fs::path &folder, const fs::path &target) {
  std::set<fs::path> targets;
  for (const MendedMill::File &file : mill.files) {
    const fs::path path = target / targetOf(file.path.path, folder);
    for (const MendedMill::File &original : mill.files) {
      std::error_code error;
      if (fs::equivalent(path, original.path.path, error)) {
        return path.string() + " is one of the files that are checked";
      }
    }
    if (!targets.insert(path).second) {
      return "two files would become " + path.string();
    }
  }
  for (const MendedMill::File &file : mill.files) {
    if (std::string fault = write(target / targetOf(file.path.path, folder), file.bytes);
        !fault.empty()) {
      return fault;
    }
  }
  return {};
}

}  // namespace corvane::checks
