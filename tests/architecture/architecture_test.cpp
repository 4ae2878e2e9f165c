#include "architecture/source_rules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::architecture {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<SourceFile> OurSources() {
  return ReadSources(CORVANE_SOURCE_DIR "/src");
}

TEST(Architecture, IncludesRunOneWay) {
  ASSERT_FALSE(OurSources().empty());
  EXPECT_THAT(IncludeComplaints(OurSources()), IsEmpty());
}

TEST(Architecture, OnlyTheFatalErrorEndsTheProcess) {
  EXPECT_THAT(ExitComplaints(OurSources()), IsEmpty());
}

TEST(SourceRules, LowerLayersMayBeIncluded) {
  EXPECT_THAT(
      IncludeComplaints({{"core/a.h", ""},
                         {"planning/b.h", "#include \"core/a.h\"\n"},
                         {"app/c.cpp", "#include <core/a.h>\n#include \"planning/b.h\"\n"}}),
      IsEmpty());
}

TEST(SourceRules, AHigherLayerMayNot) {
  EXPECT_THAT(IncludeComplaints({{"core/a.cpp", "\n#include \"app/c.h\"\n"}, {"app/c.h", ""}}),
              ElementsAre("core/a.cpp:2: core lies below app/c.h"));
}

TEST(SourceRules, APathThroughTheParentFolderIsFollowed) {
  EXPECT_THAT(
      IncludeComplaints({{"planning/a.h", "# include \"../export/b.h\"\n"}, {"export/b.h", ""}}),
      ElementsAre("planning/a.h:1: planning lies below export/b.h"));
}

TEST(SourceRules, OnlyGenerationCallsTheSolverThroughItsInterface) {
  const SourceFile interface { "solver/callable_library.h", "" };
  const SourceFile inside{"solver/pool.h", "#include \"solver/callable_library.h\"\n"};
  const std::string include = "#include \"solver/callable_library.h\"\n";
  EXPECT_THAT(IncludeComplaints({interface, inside, {"generation/a.cpp", include}}), IsEmpty());
  EXPECT_THAT(IncludeComplaints({interface, {"export/a.cpp", include}}),
              ElementsAre("export/a.cpp:1: only generation calls the solver, through "
                          "solver/callable_library.h, not solver/callable_library.h"));
  EXPECT_THAT(
      IncludeComplaints({interface, inside, {"generation/a.cpp", "#include <solver/pool.h>"}}),
      ElementsAre("generation/a.cpp:1: only generation calls the solver, through "
                  "solver/callable_library.h, not solver/pool.h"));
}

TEST(SourceRules, TheSolverLayerIsALeaf) {
  EXPECT_THAT(
      IncludeComplaints({{"core/a.h", ""}, {"solver/b.cpp", "#include \"core/a.h\"\n"}}),
      ElementsAre("solver/b.cpp:1: the solver layer is a leaf and may not include core/a.h"));
}

TEST(SourceRules, ACompanionStandsOnWhatItsTableNames) {
  EXPECT_THAT(IncludeComplaints({{"core/a.h", ""}, {"formats/b.h", "#include \"core/a.h\"\n"}}),
              IsEmpty());
  EXPECT_THAT(
      IncludeComplaints({{"planning/a.h", ""}, {"network/b.h", "#include \"planning/a.h\"\n"}}),
      ElementsAre("network/b.h:1: network does not stand on planning/a.h"));
}

TEST(SourceRules, NoLayerKnowsACompanion) {
  EXPECT_THAT(IncludeComplaints({{"app/a.cpp", "#include \"plan/b.h\"\n"}, {"plan/b.h", ""}}),
              ElementsAre("app/a.cpp:1: app knows no companion, and so not plan/b.h"));
}

TEST(SourceRules, AnUnknownFolderIsNoLayer) {
  EXPECT_THAT(IncludeComplaints({{"misc/a.h", ""}}),
              ElementsAre("misc/a.h:1: lies in no known layer"));
}

TEST(SourceRules, AnExitIsFoundInCodeOnly) {
  EXPECT_THAT(ExitComplaints({{"core/fatal.cpp", "void F() { std::exit(1); }\n"},
                              {"app/a.cpp", "// exit(1)\nstd::atexit(f); log << \"abort(\";\n"}}),
              IsEmpty());
  EXPECT_THAT(ExitComplaints({{"app/a.cpp", "int x;\nif (x) std::_Exit (2);\n"}}),
              ElementsAre("app/a.cpp:2: _Exit() outside core/fatal.cpp"));
}

TEST(SourceRules, TheSolversSelfCheckMayAbortButNotExit) {
  EXPECT_THAT(ExitComplaints({{"solver/callable_library.cpp", "std::abort();\n"}}), IsEmpty());
  EXPECT_THAT(ExitComplaints({{"solver/callable_library.cpp", "exit(1);\n"}}),
              ElementsAre("solver/callable_library.cpp:1: exit() outside core/fatal.cpp"));
  EXPECT_THAT(ExitComplaints({{"solver/sifting.cpp", "std::abort();\n"}}),
              ElementsAre("solver/sifting.cpp:1: abort() outside core/fatal.cpp"));
}

TEST(SourceRules, CodeOnlyKeepsCodeAroundLiterals) {
  EXPECT_EQ(CodeOnly("a = 1'000; /* x\ny */ b('\"'); c(\"\\\"//\"); d"),
            "a = 1'000;     \n     b(   ); c(      ); d");
}

}  // namespace
}  // namespace corvane::architecture
