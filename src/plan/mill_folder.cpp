#include "plan/mill_folder.h"

#include <filesystem>

#include "app/parameter_file.h"
#include "core/text.h"
#include "network/warning.h"

namespace corvane::plan {

std::string belowFolder(const std::string &folder, const std::string &name) {
  return folder.empty() || std::filesystem::path(name).is_absolute() ? name : folder + '/' + name;
}

RunParameters parametersOfMill(const std::string &folder, std::ostream &messages) {
  const std::string parameterFile = belowFolder(folder, parameterFileName());
  RunParameters parameters;
  if (!readParameters(parameters, parameterFile, messages)) {
    throw network::Refused(0, "the parameter file " + parameterFile + " cannot be opened");
  }
  for (QString *name : {&parameters.orderFile, &parameters.machineFile, &parameters.freightRateFile,
                        &parameters.output}) {
    *name = QString::fromStdString(belowFolder(folder, utf8(*name)));
  }
  return parameters;
}

std::string importFileOfMill(const std::string &folder, std::ostream &messages) {
  return utf8(parametersOfMill(folder, messages).output);
}

}  // namespace corvane::plan
