#pragma once

#include <iosfwd>
#include <memory>
#include <string>

#include "checks/check_summary.h"
#include "checks/finding_sink.h"

namespace corvane::checks {

// Shows findings as they come, and what was read at the end.
class Report {
 public:
  Report() = default;
  Report(const Report &) = delete;
  Report &operator=(const Report &) = delete;
  virtual ~Report() = default;

  virtual void show(const Finding &finding) = 0;
  virtual void end(const Totals &totals, const CheckSummary &summary) = 0;
};

// The formats: "text", for people; "gcc", one line each as compilers write them; "json"; "sarif",
// version 2.1.0 (OASIS, Static Analysis Results Interchange Format). Null for any other name. The
// stream outlives the report.
std::unique_ptr<Report> makeReport(const std::string &format, std::ostream &out);

std::unique_ptr<Report> makeTextReport(std::ostream &out);
std::unique_ptr<Report> makeGccReport(std::ostream &out);
std::unique_ptr<Report> makeJsonReport(std::ostream &out);
std::unique_ptr<Report> makeSarifReport(std::ostream &out);

// "data/orders.data:1:8: "; without line and column where the finding is about the whole file.
std::string placeText(const Finding &finding);

// "2 errors, 1 warning"; of nothing "no errors and no warnings".
std::string totalsText(const Totals &totals);

}  // namespace corvane::checks
