#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace corvane::sweep {

// A temporary folder with a small mill in "mill".
class StudyTest : public testing::Test {
 protected:
  void SetUp() override {
    write("mill/data/Parameters.data", "# a mill\ndays per period=5\nrand num gen seed=1\n");
    write("mill/data/orders.data", "1,LB42,44.75,60,Badger Box\n");
    write("mill/data/machines.data", "Alder Falls,AF1,LB42,124,46,68.5,13.75\n");
    write("mill/data/freightRates.data", "Badger Box,Alder Falls,Rail,18.5,1\n");
  }

  QString path(const QString &name) const { return folder_.filePath(name); }

  void write(const QString &name, const QByteArray &content) const {
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(content);
  }

  std::string content(const QString &name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(no file)";
  }

  QTemporaryDir folder_;
};

}  // namespace corvane::sweep
