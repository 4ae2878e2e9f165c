#include "scripted_lp.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>

#include "scripted_lp_record.h"
#include "scripted_lp_script.h"
#include "scripted_lp_simplex.h"
#include "solver/callable_library.h"

// Handles stay allocated after they are closed or freed, until a reset, so that the use of a dead
// handle is answered and recorded rather than undefined.
struct cpxenv {
  long number = 0;
  bool open = true;
};

struct cpxlp {
  long number = 0;
  bool live = true;
  const cpxenv *env = nullptr;
  scripted_lp::Lp lp;
  scripted_lp::Solution solution;
};

namespace scripted_lp {
namespace {

constexpr int kBadHandle = 1001;
constexpr int kBadArgument = 1200;
constexpr int kNoSolution = 1217;

struct Library {
  bool is_set_up = false;
  Script script;
  Record record;
  std::map<std::string, long, std::less<>> counts;
  std::vector<std::unique_ptr<cpxenv>> environments;
  std::vector<std::unique_ptr<cpxlp>> problems;
};

Library &State() {
  static Library library;
  return library;
}

[[noreturn]] void Refuse(const std::string &message) {
  std::fprintf(stderr, "%s\n", message.c_str());
  std::abort();
}

void SetScript(std::string_view text) {
  std::string error;
  if (!State().script.Parse(text, error)) {
    Refuse(error);
  }
}

void Clear(bool keep_in_memory) {
  Library &library = State();
  library.is_set_up = true;
  SetScript("");
  library.record.Reset(keep_in_memory);
  library.counts.clear();
  library.environments.clear();
  library.problems.clear();
}

void SetUpFromEnvironment() {
  Clear(false);
  if (const char *script = std::getenv("CORVANE_SCRIPTED_LP_SCRIPT")) {
    SetScript(script);
  }
  const char *path = std::getenv("CORVANE_SCRIPTED_LP_LOG");
  if (path != nullptr && *path != '\0' && !State().record.OpenFile(path)) {
    Refuse(std::string("scripted solver library: cannot write ") + path);
  }
}

// Counts a call and gives what the script says about it.
std::optional<Answer> BeginCall(std::string_view operation) {
  Library &library = State();
  if (!library.is_set_up) {
    SetUpFromEnvironment();
  }
  const long n = ++library.counts[std::string(operation)];
  return library.script.Find(operation, n);
}

// Records a call; the line is only built when somebody keeps it.
template <typename Build>
void Note(std::string_view function, Build build) {
  Record &record = State().record;
  if (record.IsWanted()) {
    CallText text(function);
    build(text);
    record.Add(text.Line());
  }
}

template <typename Handle>
std::string NameOf(const std::vector<std::unique_ptr<Handle>> &known, const Handle *handle,
                   const char *prefix) {
  if (handle == nullptr) {
    return "null";
  }
  // From the newest on: it is nearly always that one, and a long run creates thousands.
  const auto one = std::find_if(known.rbegin(), known.rend(),
                                [handle](const auto &item) { return item.get() == handle; });
  return one == known.rend() ? "unknown" : prefix + std::to_string((*one)->number);
}

std::string NameOf(const cpxenv *env) {
  return NameOf(State().environments, env, "env");
}
std::string NameOf(const cpxlp *lp) {
  return NameOf(State().problems, lp, "lp");
}

bool IsOpen(const cpxenv *env) {
  const auto &all = State().environments;
  return std::any_of(all.begin(), all.end(),
                     [&](const auto &one) { return one.get() == env && one->open; });
}

bool IsLive(const cpxenv *env, const cpxlp *lp) {
  const auto &all = State().problems;
  return IsOpen(env) && std::any_of(all.rbegin(), all.rend(), [&](const auto &one) {
           return one.get() == lp && one->live && one->env == env;
         });
}

CallText &Handles(CallText &text, const cpxenv *env, const cpxlp *lp) {
  return text.Text("env", NameOf(env)).Text("lp", NameOf(lp));
}

// ---- Loading ----

// The sparse columns of an argument list: column j holds entries starts[j] up to its end.
struct SparseColumns {
  int columns;
  long nonzeros;
  const double *objective;
  const int *starts;
  const int *counts;  // null: a column ends where the next one starts
  const int *rows;
  const double *values;
  const double *lower;
  const double *upper;

  long End(int j) const {
    if (counts != nullptr) {
      return static_cast<long>(starts[j]) + counts[j];
    }
    return j + 1 < columns ? starts[j + 1] : nonzeros;
  }
};

// How far a starts-and-counts layout reaches into its row and value arrays.
long Extent(int columns, const int *starts, const int *counts) {
  long extent = 0;
  for (int j = 0; starts != nullptr && counts != nullptr && j < columns; ++j) {
    extent = std::max(extent, static_cast<long>(starts[j]) + counts[j]);
  }
  return extent;
}

bool HasArrays(const SparseColumns &from) {
  return from.columns == 0 ||
         (from.objective != nullptr && from.starts != nullptr && from.lower != nullptr &&
          from.upper != nullptr &&
          (from.nonzeros == 0 || (from.rows != nullptr && from.values != nullptr)));
}

bool HasValidEntries(const SparseColumns &from, int j, std::size_t rows) {
  const long end = from.End(j);
  if (from.starts[j] < 0 || end < from.starts[j] || end > from.nonzeros) {
    return false;
  }
  for (long k = from.starts[j]; k < end; ++k) {
    if (from.rows[k] < 0 || static_cast<std::size_t>(from.rows[k]) >= rows) {
      return false;
    }
  }
  return true;
}

bool IsValid(const SparseColumns &from, std::size_t rows) {
  if (from.columns < 0 || from.nonzeros < 0 || !HasArrays(from)) {
    return false;
  }
  for (int j = 0; j < from.columns; ++j) {
    if (!HasValidEntries(from, j, rows)) {
      return false;
    }
  }
  return true;
}

void Append(const SparseColumns &from, Lp &lp) {
  for (int j = 0; j < from.columns; ++j) {
    Column column;
    column.cost = from.objective[j];
    column.lower = from.lower[j];
    column.upper = from.upper[j];
    column.rows.assign(from.rows + from.starts[j], from.rows + from.End(j));
    column.values.assign(from.values + from.starts[j], from.values + from.End(j));
    lp.columns.push_back(std::move(column));
  }
}

// ---- Answers ----

using Values = std::vector<double>;

// Hands out entries begin to end of the values, or what the script has for them.
int HandOut(const std::optional<Answer> &answer, const cpxenv *env, const cpxlp *lp,
            const Values Solution::*member, double *out, int begin, int end) {
  if (answer && !answer->has_values) {
    return answer->code;
  }
  if (answer) {
    for (std::size_t i = 0; i < answer->values.size() && begin + static_cast<long>(i) <= end; ++i) {
      out[i] = answer->values[i];
    }
    return 0;
  }
  if (!IsLive(env, lp)) {
    return kBadHandle;
  }
  if (lp->solution.status != kOptimal) {
    return kNoSolution;
  }
  const Values &values = lp->solution.*member;
  if (end == begin - 1) {
    return 0;
  }
  if (begin < 0 || end < begin || static_cast<std::size_t>(end) >= values.size() ||
      out == nullptr) {
    return kBadArgument;
  }
  std::copy(values.begin() + begin, values.begin() + end + 1, out);
  return 0;
}

int HandOutAndNote(std::string_view operation, std::string_view function, const cpxenv *env,
                   const cpxlp *lp, const Values Solution::*member, double *out, int begin,
                   int end) {
  const std::optional<Answer> answer = BeginCall(operation);
  const int result = HandOut(answer, env, lp, member, out, begin, end);
  Note(function, [&](CallText &text) {
    Handles(text, env, lp).Pointer("values", out).Integer("begin", begin).Integer("end", end);
    text.Result(result);
    // Of a scripted answer only what it set: the rest of the array may hold anything.
    long count = static_cast<long>(end) - begin + 1;
    if (answer) {
      count = std::min(count, static_cast<long>(answer->values.size()));
    }
    if (result == 0 && count > 0) {
      text.Doubles("values", out, count);
    }
  });
  return result;
}

int Optimise(const std::optional<Answer> &answer, const cpxenv *env, cpxlp *lp) {
  if (answer) {
    return answer->code;
  }
  if (!IsLive(env, lp)) {
    return kBadHandle;
  }
  lp->solution = Solve(lp->lp);
  return 0;
}

}  // namespace

void reset() {
  Clear(true);
}

void set_script(std::string_view script) {
  if (!State().is_set_up) {
    SetUpFromEnvironment();
  }
  SetScript(script);
}

const std::vector<std::string> &calls() {
  return State().record.Lines();
}

std::vector<std::string> calls_of(std::string_view operation) {
  std::string prefix = operation == "open"    ? "CPXopenCPLEXruntime"
                       : operation == "close" ? "CPXcloseCPLEX"
                                              : "CPX" + std::string(operation);
  prefix += '(';
  std::vector<std::string> found;
  std::copy_if(calls().begin(), calls().end(), std::back_inserter(found),
               [&](const std::string &line) { return line.rfind(prefix, 0) == 0; });
  return found;
}

}  // namespace scripted_lp

using namespace scripted_lp;

extern "C" {

void scripted_lp_reset_from_environment() {
  SetUpFromEnvironment();
}

CPXENVptr CPXopenCPLEXruntime(int *status, int serial, const char *licence) {
  const std::optional<Answer> answer = BeginCall("open");
  CPXENVptr env = nullptr;
  const int code = !answer ? 0 : answer->null ? kBadHandle : answer->code;
  if (code == 0) {
    auto &all = State().environments;
    all.push_back(std::make_unique<cpxenv>());
    env = all.back().get();
    env->number = static_cast<long>(all.size());
  }
  if (status != nullptr) {
    *status = code;
  }
  Note("CPXopenCPLEXruntime", [&](CallText &text) {
    text.Pointer("status", status).Integer("serial", serial);
    text.Text("licence", licence == nullptr ? "null" : licence);
    text.Result(NameOf(env)).Integer("status", code);
  });
  return env;
}

int CPXcloseCPLEX(CPXENVptr *env) {
  const std::optional<Answer> answer = BeginCall("close");
  const std::string name = env == nullptr ? "null" : NameOf(*env);
  int result = answer ? answer->code : kBadHandle;
  if (!answer && env != nullptr && IsOpen(*env)) {
    (*env)->open = false;
    *env = nullptr;
    result = 0;
  }
  Note("CPXcloseCPLEX", [&](CallText &text) { text.Text("env", name).Result(result); });
  return result;
}

CPXLPptr CPXcreateprob(CPXENVptr env, int *status, const char *name) {
  const std::optional<Answer> answer = BeginCall("createprob");
  CPXLPptr lp = nullptr;
  int code = !answer ? 0 : answer->null ? kBadHandle : answer->code;
  if (code == 0 && !IsOpen(env)) {
    code = kBadHandle;
  }
  if (code == 0) {
    auto &all = State().problems;
    all.push_back(std::make_unique<cpxlp>());
    lp = all.back().get();
    lp->number = static_cast<long>(all.size());
    lp->env = env;
  }
  if (status != nullptr) {
    *status = code;
  }
  Note("CPXcreateprob", [&](CallText &text) {
    text.Text("env", NameOf(env)).Pointer("status", status);
    text.Text("name", name == nullptr ? "null" : name);
    text.Result(NameOf(lp)).Integer("status", code);
  });
  return lp;
}

int CPXcopylp(CPXENVptr env, CPXLPptr lp, int columns, int rows, int objective_sense,
              const double *objective, const double *rhs, const char *senses, const int *matbeg,
              const int *matcnt, const int *matind, const double *matval, const double *lower,
              const double *upper, const double *ranges) {
  const std::optional<Answer> answer = BeginCall("copylp");
  const long extent = Extent(columns, matbeg, matcnt);
  const SparseColumns from{columns, extent, objective, matbeg, matcnt,
                           matind,  matval, lower,     upper};
  int result = answer ? answer->code : 0;
  if (!answer && !IsLive(env, lp)) {
    result = kBadHandle;
  } else if (!answer && (rows < 0 || (rows > 0 && (rhs == nullptr || senses == nullptr)) ||
                         (columns > 0 && matcnt == nullptr) ||
                         !IsValid(from, static_cast<std::size_t>(rows)))) {
    result = kBadArgument;
  } else if (!answer) {
    lp->solution = Solution();
    lp->lp = Lp();
    lp->lp.objective_sense = objective_sense;
    lp->lp.ranged = ranges != nullptr;
    lp->lp.rhs.assign(rhs, rhs + rows);
    lp->lp.senses.assign(senses, senses + rows);
    Append(from, lp->lp);
  }
  Note("CPXcopylp", [&](CallText &text) {
    Handles(text, env, lp).Integer("columns", columns).Integer("rows", rows);
    text.Integer("objective_sense", objective_sense).Doubles("objective", objective, columns);
    text.Doubles("rhs", rhs, rows).Characters("senses", senses, rows);
    text.Integers("matbeg", matbeg, columns).Integers("matcnt", matcnt, columns);
    text.Integers("matind", matind, extent).Doubles("matval", matval, extent);
    text.Doubles("lower", lower, columns).Doubles("upper", upper, columns);
    text.Doubles("ranges", ranges, rows).Result(result);
  });
  return result;
}

int CPXaddcols(CPXENVptr env, CPXLPptr lp, int columns, int nonzeros, const double *objective,
               const int *matbeg, const int *matind, const double *matval, const double *lower,
               const double *upper, char **names) {
  const std::optional<Answer> answer = BeginCall("addcols");
  const SparseColumns from{columns, nonzeros, objective, matbeg, nullptr,
                           matind,  matval,   lower,     upper};
  int result = answer ? answer->code : 0;
  if (!answer && !IsLive(env, lp)) {
    result = kBadHandle;
  } else if (!answer && !IsValid(from, lp->lp.rhs.size())) {
    result = kBadArgument;
  } else if (!answer) {
    Append(from, lp->lp);
  }
  Note("CPXaddcols", [&](CallText &text) {
    Handles(text, env, lp).Integer("columns", columns).Integer("nonzeros", nonzeros);
    text.Doubles("objective", objective, columns).Integers("matbeg", matbeg, columns);
    text.Integers("matind", matind, nonzeros).Doubles("matval", matval, nonzeros);
    text.Doubles("lower", lower, columns).Doubles("upper", upper, columns);
    text.Pointer("names", names).Result(result);
  });
  return result;
}

int CPXprimopt(CPXENVptr env, CPXLPptr lp) {
  const int result = Optimise(BeginCall("primopt"), env, lp);
  Note("CPXprimopt", [&](CallText &text) { Handles(text, env, lp).Result(result); });
  return result;
}

int CPXhybbaropt(CPXENVptr env, CPXLPptr lp, int method) {
  const int result = Optimise(BeginCall("hybbaropt"), env, lp);
  Note("CPXhybbaropt",
       [&](CallText &text) { Handles(text, env, lp).Integer("method", method).Result(result); });
  return result;
}

int CPXgetstat(CPXENVptr env, CPXLPptr lp) {
  const std::optional<Answer> answer = BeginCall("getstat");
  int result = kUnsolved;
  if (answer) {
    result = answer->code;
  } else if (IsLive(env, lp)) {
    result = lp->solution.status;
  }
  Note("CPXgetstat", [&](CallText &text) { Handles(text, env, lp).Result(result); });
  return result;
}

int CPXgetobjval(CPXENVptr env, CPXLPptr lp, double *value) {
  const std::optional<Answer> answer = BeginCall("getobjval");
  int result = 0;
  if (answer && !answer->has_values) {
    result = answer->code;
  } else if (answer) {
    *value = answer->values.empty() ? *value : answer->values.front();
  } else if (!IsLive(env, lp)) {
    result = kBadHandle;
  } else if (lp->solution.status != kOptimal) {
    result = kNoSolution;
  } else if (value == nullptr) {
    result = kBadArgument;
  } else {
    *value = lp->solution.objective;
  }
  Note("CPXgetobjval", [&](CallText &text) {
    Handles(text, env, lp).Pointer("value", value).Result(result);
    if (result == 0 && (!answer || !answer->values.empty())) {
      text.Doubles("value", value, 1);
    }
  });
  return result;
}

int CPXgetx(CPXENVptr env, CPXLPptr lp, double *x, int begin, int end) {
  return HandOutAndNote("getx", "CPXgetx", env, lp, &Solution::x, x, begin, end);
}

int CPXgetpi(CPXENVptr env, CPXLPptr lp, double *pi, int begin, int end) {
  return HandOutAndNote("getpi", "CPXgetpi", env, lp, &Solution::pi, pi, begin, end);
}

int CPXgetdj(CPXENVptr env, CPXLPptr lp, double *dj, int begin, int end) {
  return HandOutAndNote("getdj", "CPXgetdj", env, lp, &Solution::dj, dj, begin, end);
}

int CPXfreeprob(CPXENVptr env, CPXLPptr *lp) {
  const std::optional<Answer> answer = BeginCall("freeprob");
  const std::string name = lp == nullptr ? "null" : NameOf(*lp);
  int result = answer ? answer->code : kBadHandle;
  if (!answer && lp != nullptr && IsLive(env, *lp)) {
    (*lp)->live = false;
    (*lp)->lp = Lp();
    (*lp)->solution = Solution();
    *lp = nullptr;
    result = 0;
  }
  Note("CPXfreeprob",
       [&](CallText &text) { text.Text("env", NameOf(env)).Text("lp", name).Result(result); });
  return result;
}

}  // extern "C"
