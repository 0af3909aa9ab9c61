// Numbers on the command line are decimal.
#pragma once

#include <CLI/CLI.hpp>

namespace velto {

// Makes every numeric option of the subcommands of `app` refuse what is no finite decimal number,
// as 0x10, inf or nan, and take leading zeros as nothing: CLI11 reads 0x10 as 16 and 010 as 8. To
// be called when all options are there, before the command line is parsed.
void requireDecimalNumbers(CLI::App& app);

// Takes numbers from `least` on: CLI11's own checks name the highest number there is, too.
CLI::Validator atLeast(int least);

}  // namespace velto
