// full_form FILE [inf|file] [by-mill|file]: prints the least unmet rolls and the least cost at them
// of an import file, from the full form.

#include <cstring>
#include <iostream>

#include "network/network_reader.h"
#include "plan/full_form.h"

int main(int argc, char **argv) {
  using namespace corvane;
  if (argc != 4) {
    return 2;
  }
  try {
    const network::Network network = network::readNetworkFile(argv[1]);
    plan::ProblemOptions options;
    options.freeStock = std::strcmp(argv[2], "inf") == 0;
    options.delaysByMill = std::strcmp(argv[3], "by-mill") == 0;
    const plan::FullAnswer answer = solveFullForm(network, makeProblem(network, options));
    std::cout.precision(15);
    std::cout << answer.unmet << ' ' << answer.cost << '\n';
    return answer.solved ? 0 : 1;
  } catch (const network::Refused &refused) {
    std::cerr << refused.what() << '\n';
    return 2;
  }
}
