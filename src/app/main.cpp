#include "app/planner.h"

int main() {
  return corvane::runProcess();
}
