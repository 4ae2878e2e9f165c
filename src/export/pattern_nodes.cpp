#include "export/pattern_nodes.h"

#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "export/names.h"

namespace corvane {

namespace {

// A waste below this is noise of the subtractions.
constexpr double kLeastWaste = 1e-8;

// One pattern of one cutter.
class PatternWriter {
 public:
  PatternWriter(const ModelData &data, ImportFile &file, const PatternCompPattern &set,
                const Cutter &cutter, int index)
      : data_(data),
        file_(file),
        hasBatch_(data.settings.hasBatchNodes()),
        deckle_("\"Deckle" + general(set.deckleWidth) + "\""),
        process_(utf8(cutterWidthName(cutter))),
        pattern_(utf8(patternNodeName(set, cutter, index))),
        batch_(hasBatch_ ? utf8(batchNodeName(set, cutter, index)) : std::string()) {}

  void write(const Pattern &pattern, quint32 row) {
    const quint32 y = kPatternRowStep * row;
    if (hasBatch_) {
      writeBatch(y);
    }
    file_.line("addnode <type> \"Process\" <name> ", pattern_,
               coordinatesAt(data_.columns.pattern, y), " <period> ", data_.periods.front());
    file_.line("addattach <node> ", pattern_, " <commodity> ", deckle_, " <in> True <quantity> -1");
    writeYields(pattern);
    const double waste = pattern.trim < kLeastWaste ? 0 : pattern.trim;
    file_.line("addattach <node> ", pattern_, " <commodity> \"Waste\" <in> False <quantity> ",
               waste);
    if (!data_.settings.patternsOnly) {
      writeArcs();
    }
  }

 private:
  void writeBatch(quint32 y) {
    for (const std::string &period : data_.periods) {
      file_.line("addnode <type> \"Batch\" <name> ", batch_, " <singlePeriodSetups> True",
                 coordinatesAt(DrawingColumns::kBatch, y),
                 " <flow> 0 <fixed> False <minrunlength> 0 <batchsize> 1 <setup> 0 <period> ",
                 period);
    }
    file_.line("addattach <node> ", batch_, " <commodity> ", deckle_, " <in> True");
    file_.line("addattach <node> ", batch_, " <commodity> ", deckle_, " <in> False");
  }

  // One line for each run of equal widths; a pattern without widths yields none of width 0.
  void writeYields(const Pattern &pattern) {
    double current = 0.0;
    int count = 0;
    for (const double width : pattern.widths) {
      if (width == current) {
        ++count;
        continue;
      }
      if (current > 0.0) {
        writeYield(current, count);
      }
      current = width;
      count = 1;
    }
    writeYield(current, count);
  }

  void writeYield(double width, int count) {
    file_.line("addattach <node> ", pattern_, " <commodity> \"DemandWidth", width,
               "\" <in> False <quantity> ", count);
  }

  void writeArcs() {
    for (const std::string &period : data_.periods) {
      writeArc(process_, hasBatch_ ? batch_ : pattern_, " <cost> 10", period);
    }
    if (hasBatch_) {
      writeArc(batch_, pattern_, " <cost> 0", data_.periods.front());
    }
  }

  void writeArc(const std::string &from, const std::string &to, const char *cost,
                const std::string &period) {
    file_.line("addarc <commodity> ", deckle_, " <from> ", from, " <to> ", to,
               " <flow> 0 <fixed> False <opportunity> 0", cost,
               " <min> 0 <max> +infinity <period> ", period);
  }

  const ModelData &data_;
  ImportFile &file_;
  bool hasBatch_;
  std::string deckle_;
  std::string process_;
  std::string pattern_;
  std::string batch_;
};

}  // namespace

void writePatternNodes(const ModelData &data, ImportFile &file) {
  quint32 row = 0;
  forEachPlannedCutter(data,
                       [&](const Cutter &cutter) { writeCutterPatterns(data, file, cutter, row); });
}

void writeCutterPatterns(const ModelData &data, ImportFile &file, const Cutter &cutter,
                         quint32 &row) {
  const PatternCompPattern *set = data.patternSetOf(cutter);
  if (set == nullptr) {
    return;
  }
  int index = 0;
  forEachElement(*set->patterns, [&](const Pattern &pattern) {
    PatternWriter(data, file, *set, cutter, index++).write(pattern, row++);
  });
}

}  // namespace corvane
