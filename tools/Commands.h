// The commands of rt3.
#pragma once

#include <string>
#include <vector>

/// Each takes the arguments behind its name and returns the process's exit code.
/// @throws CUsageError
int RunInfo(const std::vector<std::wstring>& arrArguments);
int RunCsv(const std::vector<std::wstring>& arrArguments);
int RunPlot(const std::vector<std::wstring>& arrArguments);
int RunConvert(const std::vector<std::wstring>& arrArguments);
