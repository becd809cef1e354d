# What an installation has, and the Debian packages of it: the library, what is needed to develop with it, the tools.
include(CMakePackageConfigHelpers)
set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/velm_zavra)
set(libraries velm_zavra_api velm_platform)
set(header_rooms api device protocol)
if(NOT VELM_PLATFORM_ROOT)
  list(APPEND libraries velm_api_core velm_api_ext)
  list(APPEND header_rooms platform)
endif()

install(TARGETS ${libraries} EXPORT velm_zavra
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development)
foreach(room IN LISTS header_rooms)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${room}/ DESTINATION ${VELM_INSTALL_INCLUDEDIR}/${room} COMPONENT development
          FILES_MATCHING REGEX "/(VELM_|ZAVRA_|records/|values/)[^/]*\\.h$" REGEX "/linux$" EXCLUDE)
endforeach()

install(EXPORT velm_zavra NAMESPACE velm_zavra:: FILE velm_zavraTargets.cmake
        DESTINATION ${config_dir} COMPONENT development)

# The simulator, for tests of applications; its headers are C++20 and need libraries of their own.
if(VELM_BUILD_TOOLS)
  install(TARGETS zavra_simulator zavra_catalogue EXPORT velm_zavra_simulator
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT simulator)
  foreach(room IN ITEMS simulator catalogue common protocol)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/${room} DESTINATION ${VELM_INSTALL_INCLUDEDIR} COMPONENT simulator
            FILES_MATCHING PATTERN "*.h" PATTERN "${room}/records" EXCLUDE PATTERN usb_adapter.h EXCLUDE)
  endforeach()
  install(EXPORT velm_zavra_simulator NAMESPACE velm_zavra:: FILE velm_zavraSimulatorTargets.cmake
          DESTINATION ${config_dir} COMPONENT simulator)
endif()

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/velm_zavraConfig.cmake.in velm_zavraConfig.cmake
                              INSTALL_DESTINATION ${config_dir}
                              NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(velm_zavraConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/velm_zavraConfig.cmake ${PROJECT_BINARY_DIR}/velm_zavraConfigVersion.cmake
        DESTINATION ${config_dir} COMPONENT development)
if(VELM_PLATFORM_ROOT)
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/velm_platform_sdk.cmake DESTINATION ${config_dir} COMPONENT development)
endif()

if(VELM_PLATFORM_ROOT)
  set(platform_cflags "-I${VELM_PLATFORM_ROOT}/include")
  set(platform_libs "-L${VELM_PLATFORM_ROOT}/lib -lvelm_api_core -lvelm_api_ext")
else()
  set(platform_cflags "-I\${includedir}/platform")
  set(platform_libs "-lvelm_api_core -lvelm_api_ext")
endif()
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig /${pkgconfig_dir} /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/velm_zavra.pc.in velm_zavra.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/velm_zavra.pc DESTINATION ${pkgconfig_dir} COMPONENT development)

set(debian ${CMAKE_CURRENT_LIST_DIR}/debian)
set(examples ${PROJECT_SOURCE_DIR}/examples)
install(FILES ${examples}/velm_zavra_dev_init.ini ${examples}/zavra_sim_registers.ini
        DESTINATION ${CMAKE_INSTALL_DATADIR}/velm_zavra COMPONENT library)
if(NOT VELM_PLATFORM_ROOT)
  install(FILES ${debian}/60-velm-zavra-i2c.rules DESTINATION lib/udev/rules.d COMPONENT library)
endif()

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/CHANGELOG.md
                OUTPUT_FILE ${PROJECT_BINARY_DIR}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
# velm_package(COMPONENT NAME SECTION DESCRIPTION): a Debian package, and what each of them has to have.
macro(velm_package component name section description)
  string(TOUPPER ${component} COMPONENT)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${name})
  set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SECTION ${section})
  set(CPACK_COMPONENT_${COMPONENT}_DESCRIPTION ${description})
  set(${component}_documents ${CMAKE_INSTALL_DATADIR}/doc/${name})
  install(FILES ${debian}/copyright ${PROJECT_BINARY_DIR}/changelog.gz
          DESTINATION ${${component}_documents} COMPONENT ${component})
endmacro()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "${PROJECT_NAME} maintainers <maintainers@localhost>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE
    GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

velm_package(library libvelm-zavra${PROJECT_VERSION_MAJOR} libs "The shared library that applications run with")
set(library_package "${CPACK_DEBIAN_LIBRARY_PACKAGE_NAME} (>= ${PROJECT_VERSION})")
file(CONFIGURE OUTPUT shlibs CONTENT "libvelm_zavra_api ${PROJECT_VERSION_MAJOR} ${library_package}\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/shlibs ${debian}/triggers)
if(NOT VELM_PLATFORM_ROOT)
  list(APPEND CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${debian}/postinst)
  set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS passwd)
endif()

velm_package(development libvelm-zavra-dev libdevel
             "Headers, configuration for CMake and pkg-config, and examples, to build applications with")
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)
install(DIRECTORY ${examples} DESTINATION ${development_documents} COMPONENT development
        PATTERN *.sh EXCLUDE PATTERN scenarios EXCLUDE PATTERN flights EXCLUDE PATTERN campaigns EXCLUDE
        PATTERN python EXCLUDE)

if(VELM_BUILD_TOOLS)
  velm_package(tools velm-zavra-tools utils "Programs for the bench: a simulated unit, and what talks to units")
  set(CPACK_COMPONENT_TOOLS_DEPENDS library)
  install(DIRECTORY ${examples}/scenarios ${examples}/flights ${examples}/campaigns DESTINATION ${tools_documents}/examples COMPONENT tools)

  velm_package(simulator libvelm-zavra-simulator-dev libdevel "The simulated unit as a library, for tests of applications")
  set(CPACK_DEBIAN_SIMULATOR_PACKAGE_DEPENDS "libeigen3-dev, libtomlplusplus-dev, nlohmann-json3-dev")
  set(CPACK_COMPONENT_SIMULATOR_DEPENDS development)
endif()

if(VELM_BUILD_PYTHON)
  velm_package(python python3-velm-zavra python "The library for Python 3, with a simulated unit")
  set(CPACK_COMPONENT_PYTHON_DEPENDS library)
  math(EXPR next_python "${Python_VERSION_MINOR} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
      "python3 (>= ${Python_VERSION_MAJOR}.${Python_VERSION_MINOR}), python3 (<< ${Python_VERSION_MAJOR}.${next_python})")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS python3-numpy)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-pandas, python3-matplotlib")
  install(DIRECTORY ${examples}/python ${examples}/satellites DESTINATION ${python_documents}/examples COMPONENT python)
endif()

if(CMAKE_CROSSCOMPILING)
  # dpkg-shlibdeps knows the build machine's libraries only. These are what Debian 12's cross compiler links with.
  set(runtime "libc6 (>= 2.36), libgcc-s1 (>= 12), libstdc++6 (>= 12)")
  set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
      "${runtime}, libncursesw6 (>= 6.4), libtinfo6 (>= 6.4), libtomlplusplus3 (>= 3.3.0)")
  string(APPEND CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS ", ${runtime}, libtomlplusplus3 (>= 3.3.0)")
  if(NOT VELM_PLATFORM_ROOT)
    string(APPEND runtime ", libiniparser1 (>= 4.1)")
  endif()
  list(APPEND CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS ${runtime})
  list(JOIN CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS ", " CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS)
else()
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
endif()
include(CPack)
