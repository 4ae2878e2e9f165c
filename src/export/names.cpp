#include "export/names.h"

#include "core/numbers.h"
#include "core/text.h"

namespace corvane {

namespace {

QString number(double value, int decimals) {
  return QString::fromStdString(fixed(value, decimals));
}

QString indexedName(const PatternCompPattern &set, const char *family, const Cutter &cutter,
                    int index) {
  return '"' + set.grade + family + QString::number(index) + '_' + cutter.name + '_' +
         number(set.deckleWidth, 0) + '"';
}

}  // namespace

QString machineNodeName(const Cutter &cutter) {
  return "\"M_" + cutter.name + '"';
}

QString cutterWidthName(const Cutter &cutter) {
  return '"' + cutter.grade + '_' + cutter.name + '_' + number(cutter.width, 0) + '"';
}

QString cutterValueName(const Cutter &cutter, double value) {
  return '"' + cutter.grade + '_' + cutter.name + '_' + number(value, 3) + '"';
}

QString cutterSetName(const Cutter &cutter) {
  return '"' + cutter.grade + '_' + cutter.name + '"';
}

QString batchNodeName(const PatternCompPattern &set, const Cutter &cutter, int index) {
  return indexedName(set, "_Batch_", cutter, index);
}

QString patternNodeName(const PatternCompPattern &set, const Cutter &cutter, int index) {
  return indexedName(set, "_Pattern_", cutter, index);
}

QString orderNodeName(const Order &order) {
  return '"' + order.grade + '_' + order.customerName + '_' + number(order.width, 3) + '"';
}

QString orderSetName(const Order &order) {
  return '"' + order.grade + '_' + order.customerName + '"';
}

QString delayNodeName(const FreightRate &rate, const Order &order) {
  return '"' + rate.mode + '_' + order.grade + '_' + order.customerName + '_' +
         number(order.width, 3) + '"';
}

std::string wasteNodeName(const QString &grade) {
  return '"' + utf8(grade) + "_Waste\"";
}

std::string quoted(const QString &text) {
  return '"' + utf8(text) + '"';
}

}  // namespace corvane
