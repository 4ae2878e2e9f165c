#include "core/messages.h"

#include <gtest/gtest.h>

#include <sstream>

namespace corvane {
namespace {

TEST(Messages, TellWritesTheTextAndALineEndToBoth) {
  std::ostringstream channel;
  std::ostringstream log;
  tell(channel, log, "Warning: so.");
  EXPECT_EQ(channel.str(), "Warning: so.\n");
  EXPECT_EQ(log.str(), "Warning: so.\n");
}

}  // namespace
}  // namespace corvane
