#pragma once

#include <fstream>
#include <string>

#include "app/run_parameters.h"
#include "core/file_lock.h"

namespace corvane {

// The files that a run writes. None of them may be one of the four that it reads, nor the other
// one: the run would read what it writes, or have emptied what it is about to read. Such a file
// counts as one that cannot be opened, and that ends the run with a message on standard error.

// Opens the log on the unopened stream, to append to it. Nothing is written to it when it is
// refused.
void openLog(const RunParameters &parameters, std::ofstream &log);

// The import file, locked as long as this lives, so that of two runs at once on one file the second
// one ends instead of writing into the first one's.
class ImportFileOfRun {
 public:
  // Takes the lock; what the file holds stays.
  explicit ImportFileOfRun(const RunParameters &parameters);

  // Opens the file, emptied.
  std::ofstream open() const;

 private:
  std::string name_;
  FileLock lock_;
};

}  // namespace corvane
