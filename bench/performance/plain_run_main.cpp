// corvane_plain_run: the program's steps on the mill in the working directory, with literal pricing
// and CLP's primal simplex over all columns. Prints its RunResult as it stands in memory, for
// corvane_performance.

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>

#include "planner_run.h"

using namespace corvane;

int main() {
  const int channel = dup(STDOUT_FILENO);
  dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
  setenv("CORVANE_LP_PLAIN", "primal", 1);
  try {
    const bench::RunResult result = bench::runPlannerHere();
    const bool told = write(channel, &result, sizeof(result)) == ssize_t{sizeof(result)};
    return told ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception &error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
