#pragma once

#include "app/run_parameters.h"
#include "export/model_data.h"
#include "generation/generation_context.h"

namespace corvane {

// What the layers read of the run parameters.

GenerationSettings generationSettings(const RunParameters &parameters);
ExportSettings exportSettings(const RunParameters &parameters);

}  // namespace corvane
