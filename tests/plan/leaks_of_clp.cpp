// CLP does not give back the names that it writes into an MPS file.

extern "C" const char *__lsan_default_options();
extern "C" const char *__lsan_default_options() {
  return "print_suppressions=0";
}
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions() {
  return "leak:NamesAsChar\n";
}
