#include "ThreadTimes.h"

#include <filesystem>
#include <fstream>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

const std::filesystem::path TASKS = "/proc/self/task";

}  // namespace

std::set<ThreadId> ListThreads() {
    std::set<ThreadId> threads;
    for (const auto& entry : std::filesystem::directory_iterator(TASKS))
        threads.insert(std::stoi(entry.path().filename().string()));
    return threads;
}

double ReadThreadSeconds(ThreadId thread) {
    const std::filesystem::path folder = TASKS / std::to_string(thread);
    double dNanoseconds = 0;
    if (!(std::ifstream(folder / "schedstat") >> dNanoseconds) && std::filesystem::exists(folder))
        throw std::runtime_error("the system does not tell the times of threads");
    return dNanoseconds / 1e9;
}

ThreadId GetThisThread() { return ::gettid(); }

OneCore::OneCore() {
    ::sched_getaffinity(0, sizeof m_all, &m_all);
    cpu_set_t first;
    CPU_ZERO(&first);
    for (int i = 0; CPU_COUNT(&first) == 0 && i < CPU_SETSIZE; ++i)
        if (CPU_ISSET(i, &m_all)) CPU_SET(i, &first);
    if (::sched_setaffinity(0, sizeof first, &first) != 0)
        throw std::runtime_error("threads cannot be bound to a core");
}

OneCore::~OneCore() { ::sched_setaffinity(0, sizeof m_all, &m_all); }
