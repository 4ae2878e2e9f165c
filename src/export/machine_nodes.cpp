#include "export/machine_nodes.h"

#include "core/skip_list_cursor.h"
#include "core/text.h"
#include "export/names.h"

namespace corvane {

namespace {

constexpr quint32 kRowStep = 50;
constexpr quint32 kFirstRow = 210;

void writeMachine(const ModelData &data, ImportFile &file, const std::string &machine, quint32 y) {
  bool first = true;
  for (const std::string &period : data.periods) {
    const std::string coordinates = first ? " <x> 10 <y> " + std::to_string(y) : std::string();
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
  const quint32 y = kRowStep * row + kFirstRow;
  if (!machineWritten) {
    machineWritten = true;
    writeMachine(data, file, machine, y);
  }
  file.line("addnode <type> \"Process\" <name> ", process, " <x> 180 <y> ", y, " <period> ",
            data.periods.front());
  file.line("addattach <node> ", process, " <commodity> \"Machine_Time\" <in> True");
  file.line("addattach <node> ", process, " <commodity> \"Deckle", cutter.width, "\" <quantity> ",
            cutter.capacity, " <in> False");
  file.line("addarc <commodity> \"Machine_Time\" <from> ", machine, " <to> ", process,
            " <flow> 0 <fixed> False <opportunity> 0 <cost> 0 <min> 0 <max> +infinity");
  ++row;
}

}  // namespace corvane
