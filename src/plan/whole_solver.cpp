#include "plan/whole_solver.h"

#include <Cbc_C_Interface.h>

#include <cmath>
#include <memory>
#include <string>

namespace corvane::plan {

namespace {

struct DeleteModel {
  void operator()(void *model) const { Cbc_deleteModel(static_cast<Cbc_Model *>(model)); }
};

// CBC's model, for as long as the search lasts.
class Model {
 public:
  explicit Model(const LinearModel &program) : model_(Cbc_newModel()) {
    Cbc_loadProblem(get(), program.columns(), program.rows(), program.start.data(),
                    program.rowOf.data(), program.value.data(), program.lower.data(),
                    program.upper.data(), program.cost.data(), program.rowLower.data(),
                    program.rowUpper.data());
    for (std::size_t column = 0; column < program.whole.size(); ++column) {
      if (program.whole[column] != 0) {
        Cbc_setInteger(get(), static_cast<int>(column));
      }
    }
  }

  Cbc_Model *get() const { return static_cast<Cbc_Model *>(model_.get()); }

  void set(const char *parameter, const std::string &value) const {
    Cbc_setParameter(get(), parameter, value.c_str());
  }

 private:
  std::unique_ptr<void, DeleteModel> model_;
};

void setLimits(const Model &model, const WholeLimits &limits) {
  model.set("log", "0");
  Cbc_setLogLevel(model.get(), 0);
  model.set("maxNodes", std::to_string(limits.nodes));
  // Small trees searched in one go would not be counted as nodes.
  model.set("depthMiniBab", "-999");
  model.set("cuts", limits.cuts ? "on" : "off");
  Cbc_setMaximumSeconds(model.get(), limits.seconds);
  Cbc_setAllowableFractionGap(model.get(), limits.gap);
  if (std::isfinite(limits.cutoff)) {
    Cbc_setCutoff(model.get(), limits.cutoff);
  }
}

}  // namespace

WholeAnswer solveWhole(const LinearModel &program, const WholeLimits &limits) {
  const Model model(program);
  setLimits(model, limits);
  Cbc_solve(model.get());
  WholeAnswer answer;
  answer.isOptimal =
      Cbc_isProvenOptimal(model.get()) != 0 || Cbc_isProvenInfeasible(model.get()) != 0;
  const double *values = Cbc_bestSolution(model.get());
  if (values == nullptr || !(Cbc_getObjValue(model.get()) < limits.cutoff)) {
    return answer;
  }
  answer.isFound = true;
  answer.values.assign(values, values + program.whole.size());
  answer.cost = Cbc_getObjValue(model.get());
  for (std::size_t column = 0; column < program.whole.size(); ++column) {
    if (program.whole[column] != 0) {
      answer.values[column] = std::round(answer.values[column]);
    }
  }
  return answer;
}

}  // namespace corvane::plan
