#include "export/machine_nodes.h"

#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "export/names.h"

namespace corvane {

namespace {

void writeMachine(const ModelData &data, ImportFile &file, const std::string &machine, quint32 y) {
  bool first = true;
  for (const std::string &period : data.periods) {
    const std::string coordinates =
        first ? coordinatesAt(DrawingColumns::kMachine, y) : std::string();
    file.line("addnode <type> \"Machine\" <name> ", machine, coordinates, " <period> ", period,
              " <fixed> False <min> 0 <max> ", data.settings.daysPerPeriod,
              " <cost> 0 <overcost> +infinity");
    first = false;
  }
  file.line("addattach <node> ", machine, " <commodity> \"Machine_Time\" <in> False");
}

}  // namespace

void writeMachineNodes(const ModelData &data, ImportFile &file) {
  quint32 row = 0;
  SkipListGroupCursor<Cutter> machines(data.planning.cutters,
                                       data.planning.comparators.cutterByName);
  Cutter *first = nullptr;
  for (int end = machines.firstGroup(first); end == 0; end = machines.nextGroup(first)) {
    bool machineWritten = false;
    while (const Cutter *cutter = machines.next()) {
      writeCutterNodes(data, file, *cutter, row, machineWritten);
    }
  }
}

void writeCutterNodes(const ModelData &data, ImportFile &file, const Cutter &cutter, quint32 &row,
                      bool &machineWritten) {
  if (!data.planning.isPlanned(cutter.grade)) {
    return;
  }
  const std::string machine = utf8(machineNodeName(cutter));
  const std::string process = utf8(cutterWidthName(cutter));
  const quint32 y = kFirstMachineRow + kMachineRowStep * row;
  if (!machineWritten) {
    machineWritten = true;
    writeMachine(data, file, machine, y);
  }
  file.line("addnode <type> \"Process\" <name> ", process,
            coordinatesAt(DrawingColumns::kProcess, y), " <period> ", data.periods.front());
  file.line("addattach <node> ", process, " <commodity> \"Machine_Time\" <in> True");
  file.line("addattach <node> ", process, " <commodity> \"Deckle", cutter.width, "\" <quantity> ",
            cutter.capacity, " <in> False");
  file.line("addarc <commodity> \"Machine_Time\" <from> ", machine, " <to> ", process,
            " <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity");
  ++row;
}

}  // namespace corvane
