#pragma once

// The operations of the solver library under the names that lead past the timers of this program.

#include "solver/callable_library.h"

extern "C" {

CPXENVptr __real_CPXopenCPLEXruntime(int *status, int serial, const char *licence);
int __real_CPXcloseCPLEX(CPXENVptr *env);
CPXLPptr __real_CPXcreateprob(CPXENVptr env, int *status, const char *name);
int __real_CPXcopylp(CPXENVptr env, CPXLPptr lp, int columns, int rows, int sense,
                     const double *objective, const double *rhs, const char *senses,
                     const int *matbeg, const int *matcnt, const int *matind, const double *matval,
                     const double *lower, const double *upper, const double *ranges);
int __real_CPXaddcols(CPXENVptr env, CPXLPptr lp, int columns, int nonzeros,
                      const double *objective, const int *matbeg, const int *matind,
                      const double *matval, const double *lower, const double *upper, char **names);
int __real_CPXprimopt(CPXENVptr env, CPXLPptr lp);
int __real_CPXgetobjval(CPXENVptr env, CPXLPptr lp, double *value);
int __real_CPXgetx(CPXENVptr env, CPXLPptr lp, double *x, int begin, int end);
int __real_CPXgetpi(CPXENVptr env, CPXLPptr lp, double *pi, int begin, int end);
int __real_CPXgetdj(CPXENVptr env, CPXLPptr lp, double *dj, int begin, int end);
int __real_CPXfreeprob(CPXENVptr env, CPXLPptr *lp);

}  // extern "C"
