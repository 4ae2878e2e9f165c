#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::sweep {

// Writes a file whole or not at all, whoever is killed when: it takes its place by its name once
// all of it is there. Nothing waits for the disk, which would take longer than a small run. False
// when it cannot be written.
bool writeWhole(const QString &name, const QByteArray &content);

// What the file holds; nothing where it cannot be read.
QByteArray readWhole(const QString &name);

}  // namespace corvane::sweep
