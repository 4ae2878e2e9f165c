#include "checks/checked_files.h"

#include <filesystem>

namespace corvane::checks {

std::string &MillTexts::of(const std::string &file) {
  return file == "parameters" ? parameters
         : file == "machines" ? machines
         : file == "orders"   ? orders
                              : rates;
}

MillTexts cleanMill() {
  return {
      "# A mill\n"
      "batch=False\n"
      "days per period=7\n"
      "maximum widths in pattern=5\n"
      "rand num gen seed=7\n",
      "Alder Falls,AF1,LB42,124,46,68.5,13.75\n"
      "Alder Falls,AF1,CM26,121.5,52,61,10.5\n"
      "Birch Landing,BL1,LB42,126,40,69,14\n",
      "1,LB42,44.75,60,Badger Box\n"
      "1,LB42,36.5,40,Badger Box\n"
      "1,CM26,41.125,50,Clearwater Cartons\n"
      "2,LB42,44.75,24,Badger Box\n"
      "2,LB42,27.25,72,Clearwater Cartons\n"
      "2,CM26,33.75,64,Clearwater Cartons\n",
      "Badger Box,Alder Falls,Rail,18.5,1\n"
      "Badger Box,Alder Falls,Truck,24.25,0\n"
      "Badger Box,Birch Landing,Truck,26,0\n"
      "Clearwater Cartons,Alder Falls,Rail,21.75,1\n"
      "Clearwater Cartons,Alder Falls,Truck,30.5,0\n"
      "Clearwater Cartons,Birch Landing,Truck,28,0\n"};
}

TextCheck::TextCheck(const MillTexts &texts) {
  const std::filesystem::path folder = folder_.file("");
  std::filesystem::create_directory(folder / "data");
  const std::map<std::string, std::string> bytes = {{"Parameters.data", texts.parameters},
                                                    {"machines.data", texts.machines},
                                                    {"orders.data", texts.orders},
                                                    {"freightRates.data", texts.rates}};
  static const std::map<std::string, std::string> kShort = {{"Parameters.data", "parameters"},
                                                            {"machines.data", "machines"},
                                                            {"orders.data", "orders"},
                                                            {"freightRates.data", "rates"}};
  const auto read = [&](const NamedPath &path, std::string &content) {
    const auto known = bytes.find(path.path.filename().string());
    if (known == bytes.end()) {
      return false;
    }
    content = known->second;
    return true;
  };
  Selection all;
  all.level = Severity::kNote;
  FindingSink sink(
      all,
      [&](const Finding &finding) {
        std::string place =
            kShort.at(std::filesystem::path(finding.file->name()).filename().string());
        if (finding.line > 0) {
          place += ":" + std::to_string(finding.line) + ":" + std::to_string(columnOf(finding));
        }
        found.push_back({place, codeText(finding.code), messageOf(finding), finding.write,
                         finding.severity, finding.fixKind, !finding.edits.empty()});
      },
      {});
  checkMill(namedPath(QStringLiteral("data\\Parameters.data"), folder), folder, read, sink, mill);
}

std::vector<std::string> TextCheck::texts() const {
  std::vector<std::string> result;
  for (const Found &one : found) {
    result.push_back(one.text());
  }
  return result;
}

}  // namespace corvane::checks
