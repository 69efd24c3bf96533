# Where things are installed, in the places of the Filesystem Hierarchy Standard, and the packages they belong to:
#   zplhost          the command line and the print engine, without Qt
#   zplhost-printer  the virtual printer with the processes of the printer and their surfaces
include(GNUInstallDirs)

# The programs find each other beside themselves, installed and built alike, and the engine in a folder of its own.
set(ZPL_PROGRAMS_DIR ${CMAKE_INSTALL_LIBEXECDIR}/zplhost)
set(ZPL_ENGINE_DIR ${CMAKE_INSTALL_LIBDIR}/zplhost)
file(RELATIVE_PATH engineFromPrograms /${ZPL_PROGRAMS_DIR} /${ZPL_ENGINE_DIR})

# Modules are loaded by their names from where the engine is, by programs and tests that are built from where they are made.
set(ZPL_MODULES_BUILD_DIR ${PROJECT_BINARY_DIR}/modules)
set(CMAKE_BUILD_RPATH ${ZPL_MODULES_BUILD_DIR})

# zpl_program(TARGET PACKAGE): a program that others find beside it.
function(zpl_program target package)
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin INSTALL_RPATH "$ORIGIN/${engineFromPrograms}")
    install(TARGETS ${target} RUNTIME DESTINATION ${ZPL_PROGRAMS_DIR} COMPONENT ${package})
endfunction()
