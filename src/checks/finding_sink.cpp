#include "checks/finding_sink.h"

#include <algorithm>
#include <utility>

namespace corvane::checks {

namespace {

constexpr std::size_t kCodes = 1000;

bool matches(const std::vector<std::string> &prefixes, const std::string &code) {
  return std::any_of(prefixes.begin(), prefixes.end(),
                     [&](const std::string &prefix) { return code.rfind(prefix, 0) == 0; });
}

}  // namespace

FindingSink::FindingSink(Selection selection, Show show, Mend mend)
    : selection_(std::move(selection)),
      selected_(kCodes),
      show_(std::move(show)),
      mend_(std::move(mend)) {
  for (const Check &check : allChecks()) {
    const std::string text = codeText(check.code);
    selected_[static_cast<std::size_t>(check.code)] =
        (selection_.select.empty() || matches(selection_.select, text)) &&
        !matches(selection_.ignore, text);
  }
}

bool FindingSink::justCounts(Code code, Severity severity) {
  if (mend_ || !selection_.known.empty()) {
    return false;
  }
  if (severity < selection_.level) {
    ++totals_.below;
    return true;
  }
  const int bound = selection_.maximumPerCode;
  if (bound == 0 || shown_[code] < bound) {
    return false;
  }
  count(severity);
  ++totals_.notShown[code];
  return true;
}

void FindingSink::take(const Finding &finding) {
  if (mend_) {
    mend_(finding);
  }
  const auto known = selection_.known.find(keyOf(finding));
  if (known != selection_.known.end() && known->second > 0) {
    --known->second;
    ++totals_.known;
    return;
  }
  if (finding.severity < selection_.level) {
    ++totals_.below;
    return;
  }
  count(finding.severity);
  const int bound = selection_.maximumPerCode;
  if (bound != 0 && shown_[finding.code] >= bound) {
    ++totals_.notShown[finding.code];
    return;
  }
  ++shown_[finding.code];
  show_(finding);
}

}  // namespace corvane::checks
