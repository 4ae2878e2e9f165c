#pragma once

#include <QString>
#include <string>

#include "generation/pattern_set.h"
#include "planning/cutter.h"
#include "planning/freight_rate.h"
#include "planning/order.h"

namespace corvane {

// The names of nodes and sets, quotes included. Widths stand in them without decimals where they
// name a deckle and with three where they name a demand width.

QString machineNodeName(const Cutter &cutter);                // "M_{cutter}"
QString cutterWidthName(const Cutter &cutter);                // "{grade}_{cutter}_{width}"
QString cutterValueName(const Cutter &cutter, double value);  // "{grade}_{cutter}_{value}"
QString cutterSetName(const Cutter &cutter);                  // "{grade}_{cutter}"
// "{grade}_Batch_{index}_{cutter}_{deckle}" and "{grade}_Pattern_{index}_{cutter}_{deckle}"
QString batchNodeName(const PatternCompPattern &set, const Cutter &cutter, int index);
QString patternNodeName(const PatternCompPattern &set, const Cutter &cutter, int index);
QString orderNodeName(const Order &order);  // "{grade}_{customer}_{width}"
QString orderSetName(const Order &order);   // "{grade}_{customer}"
// "{mode}_{grade}_{customer}_{width}"
QString delayNodeName(const FreightRate &rate, const Order &order);

// The name of the node that takes the waste of a grade, in UTF-8.
std::string wasteNodeName(const QString &grade);  // "{grade}_Waste"

// The text in quotes, in UTF-8.
std::string quoted(const QString &text);

}  // namespace corvane
