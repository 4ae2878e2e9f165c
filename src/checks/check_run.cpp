#include "checks/check_run.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

#include "app/parameter_file.h"
#include "checks/baseline.h"
#include "checks/import_file_check.h"
#include "checks/mending.h"
#include "checks/report.h"
#include "core/files.h"
#include "core/text.h"

namespace corvane::checks {

namespace fs = std::filesystem;

namespace {

int refuse(std::ostream &err, const std::string &why) {
  err << "corvane-check: " << why << std::endl;
  return kExitNotChecked;
}

std::string upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return text;
}

// Codes separated by commas; false where one is the beginning of none.
bool addCodes(const std::vector<std::string> &texts, std::vector<std::string> &codes,
              std::string &unknown) {
  for (const std::string &text : texts) {
    for (std::size_t begin = 0; begin <= text.size();) {
      const std::size_t end = std::min(text.find(',', begin), text.size());
      const std::string code = upper(text.substr(begin, end - begin));
      const bool isKnown =
          !code.empty() &&
          std::any_of(allChecks().begin(), allChecks().end(),
                      [&](const Check &check) { return codeText(check.code).rfind(code, 0) == 0; });
      if (!isKnown) {
        unknown = text.substr(begin, end - begin);
        return false;
      }
      codes.push_back(code);
      begin = end + 1;
    }
  }
  return true;
}

std::optional<Severity> levelOf(const std::string &word) {
  if (word == "error") {
    return Severity::kError;
  }
  if (word == "warning") {
    return Severity::kWarning;
  }
  return word == "info" || word == "note" ? std::optional(Severity::kNote) : std::nullopt;
}

// Text is read by people, who have seen enough of a mistake after some; machines get all.
int defaultMaximum(const std::string &format) {
  constexpr int kEnough = 10;
  return format == "text" || format == "gcc" ? kEnough : 0;
}

// Empty, or why the options make no selection.
std::string select(const CheckOptions &options, Selection &selection) {
  std::string unknown;
  if (!addCodes(options.select, selection.select, unknown) ||
      !addCodes(options.ignore, selection.ignore, unknown)) {
    return "no code begins with '" + unknown + "'; --list shows all";
  }
  const auto level = levelOf(options.level);
  if (!level) {
    return "the level is error, warning or info, not '" + options.level + "'";
  }
  selection.level = *level;
  selection.maximumPerCode = defaultMaximum(options.format);
  if (options.maximumPerCode) {
    bool isNumber = false;
    selection.maximumPerCode = QString::fromStdString(*options.maximumPerCode).toInt(&isNumber);
    if (!isNumber || selection.maximumPerCode < 0) {
      return "--max-per-code takes a number from 0, not '" + *options.maximumPerCode + "'";
    }
  }
  std::string fault;
  if (!options.baseline.empty()) {
    if (auto known = readBaseline(options.baseline, fault)) {
      selection.known = std::move(*known);
    }
  }
  return fault;
}

bool isFormat(const std::string &word) {
  return word == "text" || word == "gcc" || word == "json" || word == "sarif";
}

struct ParameterPlace {
  NamedPath parameterFile;
  fs::path folder;
};

// A folder is one that the program is started in; its data folder will do.
ParameterPlace placeOf(const std::string &argument) {
  if (argument.empty()) {
    return {namedPath(QString::fromStdString(parameterFileName()), {}), {}};
  }
  const fs::path path(std::u8string(argument.begin(), argument.end()));
  std::error_code error;
  if (!fs::is_directory(path, error)) {
    return {namedPath(QString::fromStdString(argument), {}), {}};
  }
  const NamedPath below = namedPath(QStringLiteral("data\\Parameters.data"), path);
  const NamedPath inside = namedPath(QStringLiteral("Parameters.data"), path);
  if (!fs::exists(below.path, error) && fs::exists(inside.path, error)) {
    const fs::path whole = path.has_filename() ? path : path.parent_path();
    return {inside, whole.has_parent_path() ? whole.parent_path() : fs::path()};
  }
  return {below, path};
}

int mend(const CheckOptions &options, const ParameterPlace &place, const Selection &selection,
         std::ostream &out, std::ostream &err) {
  Selection all = selection;
  all.known.clear();
  const MendedMill mended = mendMill(place.parameterFile, place.folder, all, options.unsafeFixes);
  const std::string fault =
      writeMended(mended, place.folder, std::u8string(options.fix.begin(), options.fix.end()));
  if (!fault.empty()) {
    return refuse(err, fault);
  }
  std::ostream &told = options.format == "text" ? out : err;
  told << "\n"
       << mended.mended << " mended in " << mended.files.size() << " files below " << options.fix
       << "; left there: " << totalsText(mended.left) << "." << std::endl;
  return kExitClean;
}

int checkAll(const CheckOptions &options, const Selection &selection, std::ostream &out,
             std::ostream &err) {
  const ParameterPlace place = placeOf(options.argument);
  std::string bytes;
  if (!readBytes(place.parameterFile.path.string(), bytes)) {
    return refuse(err, "could not open the parameter file " + place.parameterFile.shown);
  }
  const std::unique_ptr<Report> report = makeReport(options.format, out);
  FindingSink sink(selection, [&](const Finding &finding) { report->show(finding); }, {});
  const auto read = [](const NamedPath &path, std::string &content) {
    return readBytes(path.path.string(), content);
  };
  CheckedMill mill;
  checkMill(place.parameterFile, place.folder, read, sink, mill);
  report->end(sink.totals(), mill.summary);
  out.flush();
  if (!out) {
    return refuse(err, "could not write the findings");
  }
  if (!options.fix.empty()) {
    if (const int status = mend(options, place, selection, out, err); status != kExitClean) {
      return status;
    }
  }
  return sink.totals().all() > 0 ? kExitFindings : kExitClean;
}

// The mill beside it is only read, for its orders.
int checkImport(const CheckOptions &options, const Selection &selection, std::ostream &out,
                std::ostream &err) {
  std::string bytes;
  if (!readBytes(options.importFile, bytes)) {
    return refuse(err, "could not open the import file " + options.importFile);
  }
  const SourceFile file(options.importFile, std::move(bytes));
  const ParameterPlace place = placeOf(options.argument);
  FindingSink silent(Selection(), [](const Finding & /*finding*/) {}, {});
  CheckedMill mill;
  const auto read = [](const NamedPath &path, std::string &content) {
    return readBytes(path.path.string(), content);
  };
  const bool hasMill = checkMill(place.parameterFile, place.folder, read, silent, mill);
  const std::unique_ptr<Report> report = makeReport(options.format, out);
  FindingSink sink(selection, [&](const Finding &finding) { report->show(finding); }, {});
  checkImportFile(file, hasMill ? &mill.records : nullptr, sink);
  report->end(sink.totals(), CheckSummary());
  if (options.format == "text") {
    out << "Read " << file.lineCount() << " lines of " << options.importFile
        << (hasMill ? ", and the orders of " : "; no orders were compared, for want of ")
        << place.parameterFile.shown << "." << std::endl;
  }
  return sink.totals().all() > 0 ? kExitFindings : kExitClean;
}

}  // namespace

int runCheck(const CheckOptions &options, std::ostream &out, std::ostream &err) {
  if (options.list) {
    out << checkList() << std::flush;
    return kExitClean;
  }
  if (!options.explain.empty()) {
    const Check *check = findCheck(options.explain);
    if (check == nullptr) {
      return refuse(err, "there is no code '" + options.explain + "'; --list shows all");
    }
    out << explanation(*check) << std::flush;
    return kExitClean;
  }
  if (!isFormat(options.format)) {
    return refuse(err, "the format is text, gcc, json or sarif, not '" + options.format + "'");
  }
  if (options.unsafeFixes && options.fix.empty()) {
    return refuse(err, "--unsafe-fixes needs --fix");
  }
  if (!options.importFile.empty() && !options.fix.empty()) {
    return refuse(err, "--fix does not change import files");
  }
  Selection selection;
  if (const std::string fault = select(options, selection); !fault.empty()) {
    return refuse(err, fault);
  }
  return options.importFile.empty() ? checkAll(options, selection, out, err)
                                    : checkImport(options, selection, out, err);
}

}  // namespace corvane::checks
