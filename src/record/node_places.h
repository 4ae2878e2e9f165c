#pragma once

#include <QHash>
#include <QPoint>
#include <iosfwd>

namespace corvane::record {

// Where an import file draws its nodes: by name, the x and y of the first line that has them. Lines
// of another form are passed over.
QHash<QByteArray, QPoint> nodePlaces(std::istream &importFile);

}  // namespace corvane::record
