#pragma once

namespace corvane::report {

// The texts of page.css and page.js.
extern const char *const kPageStyle;
extern const char *const kPageScript;

}  // namespace corvane::report
