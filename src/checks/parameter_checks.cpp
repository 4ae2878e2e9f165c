#include "checks/parameter_checks.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

#include "checks/memory_stream.h"
#include "checks/near_names.h"
#include "checks/number_form.h"
#include "checks/parameter_values.h"
#include "checks/shown_text.h"
#include "core/line_reader.h"
#include "core/text.h"

namespace corvane::checks {

namespace {

bool isBlank(std::string_view text) {
  return text.find_first_not_of(" \t") == std::string_view::npos;
}

// A line split at "=", with the places of its parts.
struct Setting {
  std::string_view key;
  std::string_view value;
  bool hasMore = false;  // behind a second "="
};

class ParameterReader {
 public:
  ParameterReader(MillRecords &mill, FindingSink &sink)
      : mill_(mill), file_(*mill.parameterFile.file), sink_(sink), rules_(parameterRules()) {
    for (const ParameterRule &rule : rules_) {
      keys_.push_back(QString::fromLatin1(rule.key));
    }
  }

  ParameterLines read() {
    FileRecords &records = mill_.parameterFile;
    records.scan.isUsable = !reportWholeFile(file_, sink_);
    if (records.scan.isUsable) {
      reportEnds(file_, sink_);
    }
    MemoryStream stream(file_.bytes());
    LineReader reader(stream);
    for (auto status = reader.next(); status != LineReader::Status::kEnd; status = reader.next()) {
      ++records.scan.lines;
      line_ = static_cast<quint32>(reader.number());
      mark_ = file_.markLength(line_);
      raw_ = file_.line(line_);
      if (status == LineReader::Status::kTooLong) {
        reportTooLong();
      } else {
        readLine(reader.text());
      }
    }
    if (records.scan.isUsable && lines_.find(QStringLiteral("rand num gen seed")) == lines_.end()) {
      sink_.add(file_, Code::kNoSeed,
                [](Finding &finding) { finding.write = "rand num gen seed=2024"; });
    }
    return std::move(lines_);
  }

 private:
  void reportTooLong() {
    sink_.add(file_, Code::kLongLine, [&](Finding &finding) {
      finding.line = line_;
      finding.offset = LineReader::kMaxLength;
      finding.detail = std::to_string(raw_.size()) + " bytes; the line is skipped";
    });
  }

  // The line is read even where the file as a whole is none: by the rules of the program.
  void readLine(char *text) {
    const std::size_t length = std::strlen(text);
    if (*text == '#' || length == 0) {
      ++mill_.parameterFile.scan.comments;
      if (length == 0 && raw_.size() > mark_) {
        reportZeroByte(length);
      }
      return;
    }
    const std::string copy(text, length);
    text_ = copy;
    Setting setting;
    FieldSplitter fields(text, '=');
    if (const auto key = fields.next()) {
      setting.key = text_.substr(static_cast<std::size_t>(key->data() - text), key->size());
    }
    if (const auto value = fields.next()) {
      setting.value = text_.substr(static_cast<std::size_t>(value->data() - text), value->size());
      setting.hasMore = fields.next().has_value();
    }
    const bool isStored = store(setting);
    mill_.parameterFile.accepted += isStored ? 1 : 0;
    if (!mill_.parameterFile.scan.isUsable) {
      return;
    }
    if (length + mark_ < raw_.size()) {
      reportZeroByte(length + mark_);
    } else if (isStored) {
      look(setting);
    } else {
      reportIgnored(setting);
    }
  }

  bool store(const Setting &setting) {
    if (setting.key.empty() || setting.value.empty()) {
      return false;
    }
    const QString key = textFromBytes(setting.key);
    before_ = parameterText(mill_.parameters, key);
    std::ostringstream messages;
    return setParameter(mill_.parameters, key, textFromBytes(setting.value), messages);
  }

  void reportZeroByte(std::size_t offset) {
    sink_.add(file_, Code::kZeroBytes, [&](Finding &finding) {
      finding.line = line_;
      finding.offset = offset;
      finding.length = 1;
      finding.detail = "the line is read as " + quotedText(raw_.substr(0, offset));
    });
  }

  // A line that sets nothing.
  void reportIgnored(const Setting &setting) {
    if (isBlank(text_)) {
      ++mill_.parameterFile.scan.comments;
      return;
    }
    const std::string_view trimmed = withoutOuterBlanks(text_);
    if (trimmed[0] == '#') {
      ++mill_.parameterFile.scan.comments;
      add(Code::kIndented, text_, [&](Finding &finding) {
        finding.detail = "a comment begins in the first column";
        replaceLine(finding, std::string(trimmed));
      });
    } else if (setting.value.empty()) {
      reportNoValue();
    } else {
      reportUnknownKey(setting);
    }
  }

  void reportNoValue() {
    add(Code::kNoValue, text_, [&](Finding &finding) {
      finding.detail = quotedText(text_) + " sets nothing";
      for (const QString &key : keys_) {
        const std::string known = utf8(key);
        if (text_.rfind(known, 0) == 0) {
          const std::string_view rest = withoutOuterBlanks(text_.substr(known.size()));
          const std::string_view value =
              withoutOuterBlanks(rest.substr(std::min(rest.find_first_not_of(":= "), rest.size())));
          finding.write = known + "=" + (value.empty() ? "..." : std::string(value));
        }
      }
    });
  }

  void reportUnknownKey(const Setting &setting) {
    const QString key = textFromBytes(setting.key);
    const QString trimmed = textFromBytes(withoutOuterBlanks(setting.key)).toLower().simplified();
    const bool isKnown = std::find(keys_.begin(), keys_.end(), trimmed) != keys_.end();
    const bool isIndented = isKnown && setting.key.front() == ' ';
    add(isIndented ? Code::kIndented : Code::kUnknownKey, setting.key, [&](Finding &finding) {
      finding.detail = quotedText(setting.key) + " is ignored";
      const auto nearest = isKnown ? std::optional(trimmed) : nearestName(key, keys_);
      if (nearest) {
        finding.detail += ", as there is no such key; the nearest is " + quotedText(utf8(*nearest));
        finding.fixKind = isKnown ? FixKind::kSafe : FixKind::kUnsafe;
        replaceLine(finding, utf8(*nearest) + "=" + std::string(withoutOuterBlanks(setting.value)));
      } else {
        finding.fixKind = FixKind::kNone;
      }
    });
  }

  // A line whose key is known.
  void look(const Setting &setting) {
    const QString key = textFromBytes(setting.key);
    const auto rule = std::find_if(rules_.begin(), rules_.end(), [&](const ParameterRule &r) {
      return key == QLatin1String(r.key);
    });
    if (const auto known = lines_.constFind(key); known != lines_.constEnd()) {
      add(Code::kKeyTwice, setting.key, [&](Finding &finding) {
        finding.detail = quotedText(setting.key) + " stands in line " + std::to_string(*known) +
                         " too; now it is " + parameterText(mill_.parameters, key);
      });
    }
    lines_.insert(key, line_);
    if (setting.hasMore) {
      const std::size_t end = offsetOf(setting.value) + setting.value.size();
      add(Code::kSecondEquals, raw_.substr(end), [&](Finding &finding) {
        finding.offset = end;
        finding.length = raw_.size() - end;
        finding.detail =
            quotedText(raw_.substr(end)) + " is lost; the value is " + quotedText(setting.value);
      });
      return;
    }
    const ValueFault fault = faultOfValue(*rule, setting.value);
    if (fault.code) {
      add(*fault.code, setting.value,
          [&](Finding &finding) { describe(finding, setting, key, fault); });
    }
    reportNoEffect(setting, *rule, fault);
  }

  void describe(Finding &finding, const Setting &setting, const QString &key,
                const ValueFault &fault) {
    const std::string now = parameterText(mill_.parameters, key);
    finding.detail = utf8(key) + " " + quotedText(setting.value) +
                     (fault.code == Code::kNoTime ? " leaves patterns of a single roll only"
                      : now == before_            ? " leaves it at " + now
                                                  : " makes it " + quotedText(now));
    finding.fixKind = fault.fixKind;
    if (!fault.meant.empty()) {
      replaceLine(finding, utf8(key) + "=" + fault.meant);
    } else {
      finding.fixKind = FixKind::kNone;
    }
  }

  void reportNoEffect(const Setting &setting, const ParameterRule &rule, const ValueFault &fault) {
    const bool isThreshold = std::strcmp(rule.key, "threshold") == 0;
    const bool isDual = std::strcmp(rule.key, "solver") == 0 && setting.value == "Dual";
    if (!fault.code && (isThreshold || isDual)) {
      add(Code::kNoEffect, text_, [&](Finding &finding) {
        finding.detail = isDual ? "Dual is the default, and a primal simplex"
                                : "nothing depends on the threshold";
      });
    }
  }

  std::size_t offsetOf(std::string_view part) const {
    return mark_ + static_cast<std::size_t>(part.data() - text_.data());
  }

  template <typename Describe>
  void add(Code code, std::string_view part, Describe describe) {
    sink_.add(file_, code, [&](Finding &finding) {
      finding.line = line_;
      if (part.data() >= text_.data() && part.data() <= text_.data() + text_.size()) {
        finding.offset = offsetOf(part);
      }
      finding.length = part.size();
      describe(finding);
    });
  }

  void replaceLine(Finding &finding, std::string line) const {
    const std::size_t begin = file_.begin(line_) + mark_;
    finding.edits.push_back({begin, file_.begin(line_) + raw_.size(), line});
    finding.write = std::move(line);
  }

  MillRecords &mill_;
  const SourceFile &file_;
  FindingSink &sink_;
  std::vector<ParameterRule> rules_;
  std::vector<QString> keys_;
  ParameterLines lines_;
  // The line that is read.
  quint32 line_ = 0;
  std::size_t mark_ = 0;
  std::string_view raw_;
  std::string_view text_;
  std::string before_;  // what the key's value was
};

}  // namespace

ParameterLines readParameterFile(MillRecords &mill, FindingSink &sink) {
  return ParameterReader(mill, sink).read();
}

}  // namespace corvane::checks
