// make_runs FOLDER --make-run RUN ...: what corvane-sweep does when an engine calls it, with the
// programs of the folder in place of the real ones.

#include "sweep/run_one.h"

int main(int argc, char **argv) {
  const QString folder = QString::fromUtf8(argv[1]);
  bool good = true;
  for (int i = 3; i < argc; ++i) {
    good = corvane::sweep::makeRun(QString::fromUtf8(argv[i]),
                                   {folder + "/corvane", folder + "/corvane-plan", {}, {}}, {}) &&
           good;
  }
  return good ? 0 : 1;
}
