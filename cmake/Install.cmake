# Where things are installed, in the places of the Filesystem Hierarchy Standard, and the packages they belong to:
#   zplhost          the command line and the print engine, without Qt
#   zplhost-web      the desk in the browser, without Qt
#   zplhost-printer  the virtual printer with the processes of the printer and their surfaces
#   libzplhost       the library for programs of others and the modules of the engine, which the others need too, without Qt
#   libzplhost-dev   what it takes to build with it
#   python3-zplhost  the module for Python over the library
include(GNUInstallDirs)

# The programs find each other beside themselves, installed and built alike, and the engine in a folder of its own.
set(ZPL_PROGRAMS_DIR ${CMAKE_INSTALL_LIBEXECDIR}/zplhost)
set(ZPL_ENGINE_DIR ${CMAKE_INSTALL_LIBDIR}/zplhost)
file(RELATIVE_PATH engineFromPrograms /${ZPL_PROGRAMS_DIR} /${ZPL_ENGINE_DIR})

# zpl_module(NAME SOURCES...): what only some runs need, with the libraries behind it. It is loaded by its name from where the
# engine is, or from where programs and tests are built, when a run asks for it, so that the others start without. It may come
# into a program with another C++ library: only plain data pass.
set(modulesDir ${PROJECT_BINARY_DIR}/modules)
set(CMAKE_BUILD_RPATH ${modulesDir})
function(zpl_module name)
    add_library(${name} MODULE ${ARGN})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    set_target_properties(${name} PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${modulesDir}
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    install(TARGETS ${name} LIBRARY DESTINATION ${ZPL_ENGINE_DIR} COMPONENT libzplhost)
endfunction()

# zpl_program(TARGET PACKAGE): a program that others find beside it.
function(zpl_program target package)
    set_target_properties(${target} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin INSTALL_RPATH "$ORIGIN/${engineFromPrograms}")
    install(TARGETS ${target} RUNTIME DESTINATION ${ZPL_PROGRAMS_DIR} COMPONENT ${package})
endfunction()
