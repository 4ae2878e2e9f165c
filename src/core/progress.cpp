#include "core/progress.h"

#include <QString>
#include <algorithm>
#include <array>
#include <iostream>
#include <utility>

#if defined(_WIN32)
#include <io.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace corvane {

namespace {

constexpr auto kInterval = std::chrono::milliseconds(250);
constexpr int kUsualColumns = 80;
constexpr int kMostColumns = 250;

// Of standard error, of which there is one.
constinit int shownColumns = 0;

bool standardErrorIsTerminal() {
#if defined(_WIN32)
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(STDERR_FILENO) != 0;
#endif
}

// The last column stays free: some terminals begin a new line once it is taken.
int usableColumns() noexcept {
  int columns = kUsualColumns;
#if defined(TIOCGWINSZ)
  struct winsize size {};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
    columns = size.ws_col;
  }
#endif
  return std::min(columns, kMostColumns) - 1;
}

// Letters of two columns are not ASCII; others that are not may take two as well without harm.
int columnsOf(QChar character) {
  return character.unicode() < 0x80 || character.isSurrogate() ? 1 : 2;
}

// Cuts the text to the columns, and gives those that it takes. What would move the cursor shows as
// a question mark.
int fit(QString &text, int columns) {
  int taken = 0;
  qsizetype length = 0;
  for (QChar &character : text) {
    if (!character.isPrint() && !character.isSurrogate()) {
      character = u'?';
    }
    if (taken + columnsOf(character) > columns) {
      break;
    }
    taken += columnsOf(character);
    ++length;
  }
  text.truncate(length);
  return taken;
}

void writeBlanks(int count) noexcept {
  std::array<char, kMostColumns> blanks{};
  blanks.fill(' ');
  std::cerr.write(blanks.data(), std::max(count, 0));
}

}  // namespace

ProgressLine::ProgressLine(Clock clock)
    : enabled_(standardErrorIsTerminal()),
      clock_(std::move(clock)),
      start_(clock_()),
      due_(start_ + kInterval) {}

void ProgressLine::show(const std::function<std::string()> &text) {
  if (!enabled_) {
    return;
  }
  const auto now = clock_();
  if (now < due_) {
    return;
  }
  due_ = now + kInterval;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - start_).count();
  QString line = QString::fromStdString(text() + ", " + std::to_string(seconds) + " s");
  const int columns = usableColumns();
  const int taken = fit(line, columns);
  std::cerr << '\r' << line.toStdString();
  writeBlanks(std::min(shownColumns, columns) - taken);
  std::cerr << std::flush;
  shownColumns = taken;
}

void ProgressLine::finish() noexcept {
  clearProgress();
}

void clearProgress() noexcept {
  if (shownColumns > 0) {
    std::cerr << '\r';
    writeBlanks(std::min(shownColumns, usableColumns()));
    std::cerr << '\r' << std::flush;
    shownColumns = 0;
  }
}

}  // namespace corvane
