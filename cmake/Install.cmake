# SPDX-License-Identifier: Apache-2.0

include(CMakePackageConfigHelpers)

set(PI_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/pi)

install(DIRECTORY include/pi base/velk/include/velk base/velkx/include/velkx exchange/include/pi
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES share/pi/configuration-documents.xsd share/pi/drives.rules.yml share/pi/model.schema.json
    share/pi/strings.en.xml share/pi/strings.xsd
    DESTINATION ${CMAKE_INSTALL_DATADIR}/pi)

# One export set per library, so that a deployment can bring the base libraries itself.
foreach(library IN ITEMS velk velkx pi)
    string(TOUPPER ${library} namespace)
    install(TARGETS ${library} EXPORT ${library}Targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
    install(EXPORT ${library}Targets NAMESPACE ${namespace}:: DESTINATION ${PI_CMAKE_DIR})
endforeach()
install(TARGETS piexchange EXPORT piexchangeTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT piexchangeTargets NAMESPACE PI:: DESTINATION ${PI_CMAKE_DIR})

configure_package_config_file(cmake/piConfig.cmake.in piConfig.cmake
    INSTALL_DESTINATION ${PI_CMAKE_DIR} PATH_VARS CMAKE_INSTALL_DATADIR)
write_basic_package_version_file(piConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/piConfig.cmake ${PROJECT_BINARY_DIR}/piConfigVersion.cmake
    cmake/piPlugin.cmake cmake/plugin.map
    DESTINATION ${PI_CMAKE_DIR})

# pkg-config files that find their tree from their own place, so that the installed tree can be moved.
file(RELATIVE_PATH PI_PC_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
foreach(library IN ITEMS pi piexchange)
    configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
