// Quality values of a simulated read, which tell more or less about its errors.
#pragma once

#include <cstdint>
#include <vector>

#include "core/random.h"
#include "simulation/error_model.h"
#include "simulation/template_errors.h"

namespace velto {

// Phred values of the bases of a read of `readLength` bases that applyErrors() made with these
// errors. The model has qualities. One draw per base, none if the values carry no information.
std::vector<std::uint8_t> drawQualities(int readLength, const std::vector<TemplateError>& errors,
                                        const QualityModel& model, Random& random);

}  // namespace velto
