#include "plan/plan_files.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <system_error>

#include "plan/plan_json.h"
#include "plan/plan_tables.h"

namespace corvane::plan {

namespace {

namespace fs = std::filesystem;

bool writeFile(const fs::path &path, const PlanRecord &record,
               void (*write)(const PlanRecord &, std::ostream &)) {
  fs::path part = path;
  part += ".part";
  std::error_code error;
  {
    std::ofstream out(part, std::ios::binary | std::ios::trunc);
    write(record, out);
    out.close();
    if (!out) {
      fs::remove(part, error);
      return false;
    }
  }
  fs::rename(part, path, error);
  return !error;
}

}  // namespace

std::string writePlanFiles(const PlanRecord &record, const std::string &folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  std::vector<PlanTable> files = planTables();
  files.push_back({"plan.json", writePlanJson});
  for (const PlanTable &file : files) {
    const fs::path path = fs::path(folder) / file.file;
    if (!writeFile(path, record, file.write)) {
      return path.string();
    }
  }
  return "";
}

}  // namespace corvane::plan
