#pragma once

#include <map>
#include <string>
#include <vector>

#include "checks/mill_check.h"

namespace corvane::checks {

// Gathers what --fix changes in the files of one check.
class Mender {
 public:
  explicit Mender(bool unsafeToo) : unsafeToo_(unsafeToo) {}

  // Takes the edits of a finding all together, or not at all where one meets an edit that is taken.
  void take(const Finding &finding);

  qint64 count() const { return count_; }
  // The bytes of the file with its edits.
  std::string mended(const SourceFile &file) const;

 private:
  bool unsafeToo_;
  qint64 count_ = 0;
  // Of each file, by begin.
  std::map<const SourceFile *, std::multimap<std::size_t, Edit>> edits_;
};

// A mill whose mistakes have been mended as far as can be.
struct MendedMill {
  struct File {
    NamedPath path;  // of the original
    std::string bytes;
  };
  std::vector<File> files;
  qint64 mended = 0;  // findings
  Totals left;
};

// Checks and mends in turn, since one mistake may hide another, until nothing can be mended.
MendedMill mendMill(const NamedPath &parameterFile, const std::filesystem::path &folder,
                    const Selection &selection, bool unsafeToo);

// Writes the files below the target folder, where they lie as their originals below the folder;
// those that do not lie there, by their bare names. Nothing is written, and what is wrong returned,
// where a file would take the place of an original.
std::string writeMended(const MendedMill &mill, const std::filesystem::path &folder,
                        const std::filesystem::path &target);

}  // namespace corvane::checks
