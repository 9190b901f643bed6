# What `cmake --install` puts where: headers, library, host, and the files that find_package and pkg-config read.
include(CMakePackageConfigHelpers)

set(OMBREL_CMAKE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/Ombrel")

# The modules behind the library matter to a program only when it links the library statically.
set(OMBREL_PC_MODULES "cairo pangocairo pangoft2 fontconfig glib-2.0 libpng")
if(BUILD_SHARED_LIBS)
    set(OMBREL_PC_REQUIRES "")
else()
    set(OMBREL_PC_REQUIRES "Requires: ${OMBREL_PC_MODULES}")
endif()

install(TARGETS ombrel EXPORT OmbrelTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ombrel/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ombrel FILES_MATCHING PATTERN "*.h" PATTERN "*Internal*" EXCLUDE)
install(EXPORT OmbrelTargets NAMESPACE Ombrel:: DESTINATION ${OMBREL_CMAKE_DIR})

configure_package_config_file(cmake/OmbrelConfig.cmake.in ${PROJECT_BINARY_DIR}/OmbrelConfig.cmake
    INSTALL_DESTINATION ${OMBREL_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OmbrelConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OmbrelConfig.cmake ${PROJECT_BINARY_DIR}/OmbrelConfigVersion.cmake
    DESTINATION ${OMBREL_CMAKE_DIR})

file(RELATIVE_PATH OMBREL_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/ombrel.pc.in ${PROJECT_BINARY_DIR}/ombrel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ombrel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The host finds the library beside it, wherever the tree is put.
file(RELATIVE_PATH OMBREL_BIN_TO_LIB "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set_target_properties(ombrel_command PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin
    INSTALL_RPATH "$ORIGIN/${OMBREL_BIN_TO_LIB}")
install(TARGETS ombrel_command RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
