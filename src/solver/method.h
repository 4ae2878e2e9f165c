#pragma once

namespace corvane::lp {

enum class Method { kPrimal, kDual, kBarrier };

}  // namespace corvane::lp
