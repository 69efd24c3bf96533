# find_package(ZplHost): the target ZplHost::zplhost, with zplhost.h and zplhost.hpp.
include("${CMAKE_CURRENT_LIST_DIR}/ZplHostTargets.cmake")
