# For hosts of the screen: find_package(RealTimeMode) gives RealTimeMode::windows, the platform that a
# host links with, and RealTimeMode::operator, which works a screen's controls by itself.
include(CMakeFindDependencyMacro)
find_dependency(Threads)
find_dependency(TBB)
include(${CMAKE_CURRENT_LIST_DIR}/RealTimeModeTargets.cmake)
