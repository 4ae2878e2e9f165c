#include "export/waste_nodes.h"

#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "export/names.h"

namespace corvane {

namespace {

void writeWidthArcs(const ModelData &data, ImportFile &file, const Cutter &cutter,
                    const Pattern &pattern, const std::string &node) {
  double previous = 0.0;
  for (const double width : pattern.widths) {
    if (width != previous) {
      file.line(
          "addarc <commodity> \"DemandWidth", width, "\" <from> ", node, " <to> ",
          utf8(cutterValueName(cutter, width)),
          " <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity <period> ",
          data.periods.front());
    }
    previous = width;
  }
}

}  // namespace

void writeWasteDemandNode(const ModelData &data, ImportFile &file, const QString &grade,
                          quint32 &storageRow) {
  const std::string node = wasteNodeName(grade);
  file.line("addnode <type> \"Demand\" <name> ", node,
            coordinatesAt(data.columns.storage, kWasteRowStep * storageRow),
            " <amount> 0 <fixed> False <period> ", data.periods.front());
  file.line("addattach <node> ", node, " <commodity> \"Waste\" <in> True");
  ++storageRow;
}

void writeCutterArcs(const ModelData &data, ImportFile &file, const Cutter &cutter) {
  const PatternCompPattern *set = data.patternSetOf(cutter);
  if (set == nullptr) {
    return;
  }
  const std::string waste = wasteNodeName(cutter.grade);
  int index = 0;
  forEachElement(*set->patterns, [&](const Pattern &pattern) {
    const std::string node = utf8(patternNodeName(*set, cutter, index++));
    writeWidthArcs(data, file, cutter, pattern, node);
    for (const std::string &period : data.periods) {
      file.line("addarc <commodity> \"Waste\" <from> ", node, " <to> ", waste,
                " <flow> 0 <fixed> False <opportunity> 0 <cost> ", cutter.wasteCost,
                " <min> 0 <max> +infinity <period> ", period);
    }
  });
}

}  // namespace corvane
