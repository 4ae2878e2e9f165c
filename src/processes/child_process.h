#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

namespace corvane {

// A program to run as a child of this one.
struct ChildRequest {
  std::vector<std::string>
      words;           // the program, looked for in PATH where it has no slash; arguments
  std::string folder;  // where it is started; empty for here
  std::string input = "/dev/null";
  std::string output;           // files for what it says; empty for where this one says it
  std::string error;            // the same name as of the output: both in one file, as they come
  std::string withoutVariable;  // an environment variable that it does not get
};

// How a child ended.
struct ChildEnd {
  bool started = false;
  bool exited = false;  // false when a signal ended it
  int status = -1;      // the exit status, or the number of the signal

  bool isGood() const { return started && exited && status == 0; }
};

// A program with its arguments, all that it says in the file.
ChildRequest loggedRequest(const QStringList &words, const QString &log);

// Runs the child and waits for its end.
ChildEnd runChild(const ChildRequest &request);

}  // namespace corvane
