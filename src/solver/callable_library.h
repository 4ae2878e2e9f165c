#pragma once

// The 13 operations of the callable LP library that pattern generation uses. Names, C linkage and
// argument order are the library's own; any library file that offers them can stand behind this
// header (see CORVANE_LP_LIBRARY in the build).
//
// An LP is: minimise c'x subject to the rows A x (sense) b and lower <= x <= upper. Columns are
// given by start, count, row index and value. A bound of 1e20 or beyond is infinite.
//
// Operations that return int answer 0 on success and a nonzero code on failure. The library prints
// nothing. One thread at a time.

extern "C" {

using CPXENVptr = struct cpxenv *;
using CPXLPptr = struct cpxlp *;

// Opens an environment, which the caller owns until CPXcloseCPLEX. Called with serial 0 and no
// licence text. On failure returns null and sets *status to a nonzero code.
CPXENVptr CPXopenCPLEXruntime(int *status, int serial, const char *licence);

// Closes *env with every problem still in it, and sets it to null.
int CPXcloseCPLEX(CPXENVptr *env);

// Creates an empty problem that belongs to env. On failure returns null and sets *status.
CPXLPptr CPXcreateprob(CPXENVptr env, int *status, const char *name);

// Loads a whole LP and replaces what the problem held. objective, matbeg, matcnt, lower and upper
// hold `columns` entries; rhs and senses ('G', 'L' or 'E') hold `rows`; ranges may be null.
// objectiveSense 1 minimises. All arrays are copied.
int CPXcopylp(CPXENVptr env, CPXLPptr lp, int columns, int rows, int objectiveSense,
              const double *objective, const double *rhs, const char *senses, const int *matbeg,
              const int *matcnt, const int *matind, const double *matval, const double *lower,
              const double *upper, const double *ranges);

// Adds columns; column j ends where column j + 1 starts, the last at `nonzeros`. names may be null.
int CPXaddcols(CPXENVptr env, CPXLPptr lp, int columns, int nonzeros, const double *objective,
               const int *matbeg, const int *matind, const double *matval, const double *lower,
               const double *upper, char **names);

// Solves with the primal simplex method.
int CPXprimopt(CPXENVptr env, CPXLPptr lp);

// Solves with the barrier method and a crossover; method 'p' is a primal crossover.
int CPXhybbaropt(CPXENVptr env, CPXLPptr lp, int method);

// The status of the last solve: 1 optimal, 2 unbounded, 3 infeasible, 6 anything else.
int CPXgetstat(CPXENVptr env, CPXLPptr lp);

// The optimal objective value.
int CPXgetobjval(CPXENVptr env, CPXLPptr lp, double *value);

// Values of columns begin to end (both included) into x[0 .. end - begin].
int CPXgetx(CPXENVptr env, CPXLPptr lp, double *x, int begin, int end);

// Dual values of rows begin to end. Of a minimisation, that of a 'G' row is >= 0.
int CPXgetpi(CPXENVptr env, CPXLPptr lp, double *pi, int begin, int end);

// Reduced costs c - A'y of columns begin to end.
int CPXgetdj(CPXENVptr env, CPXLPptr lp, double *dj, int begin, int end);

// Frees *lp and sets it to null.
int CPXfreeprob(CPXENVptr env, CPXLPptr *lp);

}  // extern "C"
