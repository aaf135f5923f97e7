// What processes and their threads have used of the machine, as the system's books say.
#pragma once

#include <string>
#include <sys/types.h>

/// Resident memory of a process now, in megabytes; 0: there is no such process. Any thread.
double MeasureResidentMegabytes(pid_t nProcess);

/// Processor time so far of the threads of a process whose names begin so, in seconds.
/// @throws std::runtime_error when there is none, or the system does not say
double MeasureThreadSeconds(pid_t nProcess, const std::string& strNames);
