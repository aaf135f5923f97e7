#include "soak/ProcessTimes.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace fs = std::filesystem;

double MeasureResidentMegabytes(pid_t nProcess) {
    std::size_t nPages = 0;
    std::size_t nResident = 0;
    std::ifstream("/proc/" + std::to_string(nProcess) + "/statm") >> nPages >> nResident;
    return static_cast<double>(nResident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

double MeasureThreadSeconds(pid_t nProcess, const std::string& strNames) {
    double dSeconds = -1;
    for (const auto& entry :
         fs::directory_iterator("/proc/" + std::to_string(nProcess) + "/task")) {
        std::string strName;
        std::getline(std::ifstream(entry.path() / "comm"), strName);
        double dNanoseconds = 0;
        if (strName.starts_with(strNames) &&
            std::ifstream(entry.path() / "schedstat") >> dNanoseconds)
            dSeconds = (dSeconds < 0 ? 0 : dSeconds) + dNanoseconds / 1e9;
    }
    if (dSeconds < 0) throw std::runtime_error("no times of threads " + strNames);
    return dSeconds;
}
