# What goes into the packages beside the programs, and what the packages say of themselves.

# Manual pages and completion come from the table of options, as the program prints them.
set(manual ${PROJECT_BINARY_DIR}/manual)
add_custom_command(OUTPUT ${manual}/stamp
    COMMAND ${PROJECT_SOURCE_DIR}/packaging/make-manual $<TARGET_FILE:zpl> ${manual}
    COMMAND ${CMAKE_COMMAND} -E touch ${manual}/stamp
    DEPENDS zpl packaging/make-manual VERBATIM)
add_custom_target(manual ALL DEPENDS ${manual}/stamp)

install(CODE "
    set(bin \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR})
    file(MAKE_DIRECTORY \${bin})
    file(CREATE_LINK ../${ZPL_PROGRAMS_DIR}/zpl \${bin}/zpl SYMBOLIC)" COMPONENT zplhost)
install(DIRECTORY ${manual}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT zplhost)
install(FILES ${manual}/zpl.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME zpl COMPONENT zplhost)
install(FILES ${manual}/_zpl DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT zplhost)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zplhost COMPONENT zplhost FILES_MATCHING PATTERN *.zpl)
install(DIRECTORY examples/embed DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libzplhost-dev/examples COMPONENT libzplhost-dev
    PATTERN *.py EXCLUDE)
install(FILES examples/embed/fields.py DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/python3-zplhost/examples COMPONENT python3-zplhost)
# The package of a shared library is called after its version, so that two of them can stand side by side.
set(library_package libzplhost${PROJECT_VERSION_MAJOR})
foreach(component zplhost zplhost-web zplhost-printer libzplhost libzplhost-dev python3-zplhost)
    set(package ${component})
    if(component STREQUAL libzplhost)
        set(package ${library_package})
    endif()
    set(doc ${CMAKE_INSTALL_DATADIR}/doc/${package})
    install(FILES NOTICE DESTINATION ${doc} RENAME copyright COMPONENT ${component})
    install(FILES ${manual}/NEWS.gz DESTINATION ${doc} COMPONENT ${component})
endforeach()

set(ZPL_PROGRAMS_FULL_DIR ${CMAKE_INSTALL_PREFIX}/${ZPL_PROGRAMS_DIR})
configure_file(packaging/zpl-serve.service.in zpl-serve.service @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zpl-serve.service DESTINATION lib/systemd/system COMPONENT zplhost-printer)

# What a package needs beside the libraries that it is linked with is listed where it is for a tree that is built.
function(zpl_running_packages variable pattern)
    file(STRINGS packages.txt lines REGEX "^${pattern}")
    list(TRANSFORM lines REPLACE "[ \t].*" "")
    list(JOIN lines ", " joined)
    set(${variable} "${joined}" PARENT_SCOPE)
endfunction()
zpl_running_packages(fonts "x?fonts-")
zpl_running_packages(surfaces "qml6-")
zpl_running_packages(editor "libjs-")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zplhost)
set(CPACK_PACKAGE_VENDOR "The ZplHost authors")
set(CPACK_PACKAGE_CONTACT "The ZplHost authors <zplhost@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL zplhost zplhost-web zplhost-printer libzplhost libzplhost-dev python3-zplhost)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_ZPLHOST_PACKAGE_NAME zplhost)
set(CPACK_DEBIAN_ZPLHOST_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_ZPLHOST_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_ZPLHOST_PACKAGE_SUGGESTS "zplhost-web, zplhost-printer")
set(CPACK_COMPONENT_ZPLHOST_DESCRIPTION "draws labels written in the ZPL label language
Draws every page of a print stream as a picture, dot for dot as the printer
would print it, tells what would not print as it was sent, and compares pages
for tests of labels.")

set(CPACK_DEBIAN_ZPLHOST-WEB_PACKAGE_NAME zplhost-web)
set(CPACK_DEBIAN_ZPLHOST-WEB_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_ZPLHOST-WEB_PACKAGE_DEPENDS "zplhost (= ${PROJECT_VERSION}), ${editor}")
set(CPACK_COMPONENT_ZPLHOST-WEB_DESCRIPTION "desk in the browser for the ZPL label language
Serves a page in which labels are written and seen while they are written, and
doors at which programs have them drawn and checked over HTTP.")

set(CPACK_DEBIAN_ZPLHOST-PRINTER_PACKAGE_NAME zplhost-printer)
set(CPACK_DEBIAN_ZPLHOST-PRINTER_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_ZPLHOST-PRINTER_PACKAGE_DEPENDS "zplhost (= ${PROJECT_VERSION}), ${surfaces}")
set(CPACK_DEBIAN_ZPLHOST-PRINTER_PACKAGE_RECOMMENDS zplhost-web)
set(CPACK_DEBIAN_ZPLHOST-PRINTER_PACKAGE_SUGGESTS 
    "qml6-module-qtquick-virtualkeyboard, qml6-module-qt-labs-folderlistmodel, qt6-virtualkeyboard-plugin")
set(CPACK_DEBIAN_ZPLHOST-PRINTER_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/packaging/postinst ${PROJECT_SOURCE_DIR}/packaging/prerm ${PROJECT_SOURCE_DIR}/packaging/postrm)
set(CPACK_COMPONENT_ZPLHOST-PRINTER_DESCRIPTION "virtual printer for the ZPL label language
Is a label printer that any program can print to over the network; each page
becomes a picture, and a window shows the pages while they print.")

set(CPACK_DEBIAN_LIBZPLHOST_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBZPLHOST_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBZPLHOST_PACKAGE_DEPENDS "${fonts}")
set(CPACK_DEBIAN_LIBZPLHOST_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_COMPONENT_LIBZPLHOST_DESCRIPTION "draws labels in the ZPL label language in memory
The library for programs that draw labels themselves: takes a print stream in
any pieces, and gives each page as rows of dots, PNG or PDF, with what stands
where on it and what would not print as it was sent. Other packages of ZplHost
find here what their engine loads when a label needs it.")

set(CPACK_DEBIAN_LIBZPLHOST-DEV_PACKAGE_NAME libzplhost-dev)
set(CPACK_DEBIAN_LIBZPLHOST-DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBZPLHOST-DEV_PACKAGE_DEPENDS "${library_package} (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_LIBZPLHOST-DEV_DESCRIPTION "headers of the library that draws labels in the ZPL label language
The C header, a C++ header on top of it, and what CMake and pkg-config need to
find them, with two programs as examples.")

set(CPACK_DEBIAN_PYTHON3-ZPLHOST_PACKAGE_NAME python3-zplhost)
set(CPACK_DEBIAN_PYTHON3-ZPLHOST_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON3-ZPLHOST_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON3-ZPLHOST_PACKAGE_DEPENDS
    "${library_package} (= ${PROJECT_VERSION}), python3 (>= 3.10), python3-cffi-backend")
set(CPACK_COMPONENT_PYTHON3-ZPLHOST_DESCRIPTION "draws labels in the ZPL label language in Python
A module that draws a print stream in memory: each page as PNG, rows of dots or
a NumPy array, with what stands where on it and what would not print as it was
sent. Tests of labels hold pages against pictures with it.")
include(CPack)
