#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <string>

#include "export/import_file.h"
#include "export/model_data.h"
#include "support/mill.h"
#include "support/pattern_set_dump.h"

namespace corvane::support {

// Writes parts of the import file of a mill, with settings and pattern sets that the test fills.
class ModelTest : public testing::Test {
 protected:
  using Step = std::function<void(const ModelData &data, ImportFile &file)>;

  // What the steps write, with one ModelData.
  std::string write(Mill &mill, const Step &step) {
    const ModelData data(mill.data(), sets_, settings_);
    return write(data, step);
  }

  static std::string write(const ModelData &data, const Step &step) {
    std::ostringstream out;
    ImportFile file(out);
    step(data, file);
    return out.str();
  }

  ExportSettings settings_;
  PatternSets sets_;
};

}  // namespace corvane::support
