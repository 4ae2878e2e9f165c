// Carries the precompiled headers that the test executables share (tests/CMakeLists.txt).
int main() {
  return 0;
}
