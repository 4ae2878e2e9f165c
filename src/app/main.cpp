#include "app/planner.h"

int main() {
  return runProcess();
}
