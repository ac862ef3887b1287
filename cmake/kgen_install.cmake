# What is installed beside the programs, and the Debian packages (cpack).
set(packaging ${PROJECT_SOURCE_DIR}/packaging)

# kgen_compressed(INPUT OUTPUT FOLDER): a file that Debian wants compressed, the same each time.
function(kgen_compressed input output folder)
  set(made ${CMAKE_CURRENT_BINARY_DIR}/install/${output})
  add_custom_command(OUTPUT ${made}
                     COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/install
                     COMMAND gzip -9nc ${input} > ${made} DEPENDS ${input})
  add_custom_target(compressed_${output} ALL DEPENDS ${made})
  install(FILES ${made} DESTINATION ${folder})
endfunction()

set(kgen_page ${CMAKE_CURRENT_BINARY_DIR}/kgen.1)
add_custom_command(OUTPUT ${kgen_page} COMMAND kgen man > ${kgen_page} DEPENDS kgen)
kgen_compressed(${kgen_page} kgen.1.gz ${CMAKE_INSTALL_MANDIR}/man1)
kgen_compressed(${packaging}/man/k7comp.1 k7comp.1.gz ${CMAKE_INSTALL_MANDIR}/man1)
kgen_compressed(${packaging}/debian/changelog changelog.gz ${CMAKE_INSTALL_DATADIR}/doc/kgen)
install(FILES ${packaging}/debian/copyright
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kgen)
install(FILES ${packaging}/debian/lintian-overrides RENAME kgen
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kgen/examples FILES_MATCHING PATTERN "*.GN7"
        PATTERN host EXCLUDE)

if(KGEN_UI)
  kgen_compressed(${packaging}/man/kgen-desktop.1 kgen-desktop.1.gz ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${packaging}/desktop/kgen-desktop.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${packaging}/desktop/com.tervane.kgen_desktop.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  install(FILES ${packaging}/desktop/kgen.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable)
  install(FILES ${PROJECT_SOURCE_DIR}/src/ui/icons/kgen.svg
          DESTINATION ${icons}/apps)
  install(FILES ${PROJECT_SOURCE_DIR}/src/ui/icons/kgen-project.svg
          DESTINATION ${icons}/mimetypes)
  # The packages for host programs: the shared library, and what they are built with.
  set(package_pages ${packaging}/debian/copyright ${CMAKE_CURRENT_BINARY_DIR}/install/changelog.gz)
  install(FILES ${package_pages} COMPONENT control
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libkgenctl${PROJECT_VERSION_MAJOR})
  install(FILES ${package_pages} COMPONENT development
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kgen-dev)
  install(FILES ${PROJECT_SOURCE_DIR}/examples/host/main.cpp
                ${PROJECT_SOURCE_DIR}/examples/host/CMakeLists.txt
          COMPONENT development DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kgen-dev/examples/host)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kgen)
set(CPACK_PACKAGE_VENDOR "KGen developers")
set(CPACK_PACKAGE_CONTACT "KGen developers <kgen@tervane.com>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ
    GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL programs)
if(KGEN_UI)
  list(APPEND CPACK_COMPONENTS_ALL control development)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/apps/kgenctl)

set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME kgen)
if(KGEN_UI)
  set(CPACK_DEBIAN_PROGRAMS_PACKAGE_RECOMMENDS "fonts-dejavu-core")
endif()
set(CPACK_COMPONENT_PROGRAMS_DESCRIPTION "generator of programs for modular data loggers
KGen describes a K700 data logger: its modules, what they measure, how often,
and what is stored. It checks the project and writes the complete logger
program, the table information and the wiring list. This package has the
command line, the pre-compiler and the desktop program.")

set(kgen_library_package libkgenctl${PROJECT_VERSION_MAJOR})
set(kgen_library_version "${kgen_library_package} (>= ${PROJECT_VERSION})")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/control/shlibs
     "libkgenctl ${PROJECT_VERSION_MAJOR} ${kgen_library_version}\n")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/control/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_CONTROL_PACKAGE_NAME ${kgen_library_package})
set(CPACK_DEBIAN_CONTROL_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_CONTROL_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_BINARY_DIR}/control/shlibs ${CMAKE_CURRENT_BINARY_DIR}/control/triggers)
set(CPACK_COMPONENT_CONTROL_DESCRIPTION "control of the logger program generator (library)
KGenCtl is the main panel of the program generator for K700 data loggers as a
Qt widget. This package has its shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME kgen-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${kgen_library_package} (= ${PROJECT_VERSION}), qt6-base-dev, libqt6svg6-dev | qt6-svg-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "control of the logger program generator (development)
KGenCtl is the main panel of the program generator for K700 data loggers as a
Qt widget. This package has its header, its CMake package, the plugin for the
form designer and an example of a host program.")
include(CPack)
