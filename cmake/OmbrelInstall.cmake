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

# Components are the packages that they end up in: the library, what programs are compiled with, and the host.
install(TARGETS ombrel EXPORT OmbrelTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
# A folder's own headers are public; those of its subfolders are not.
file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/ombrel/*.h)
install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ombrel COMPONENT development)
foreach(folder IN LISTS OMBREL_PUBLIC_FOLDERS)
    file(GLOB headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/ombrel/${folder}/*.h)
    install(FILES ${headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ombrel/${folder} COMPONENT development)
endforeach()
install(EXPORT OmbrelTargets NAMESPACE Ombrel:: DESTINATION ${OMBREL_CMAKE_DIR} COMPONENT development)

configure_package_config_file(cmake/OmbrelConfig.cmake.in ${PROJECT_BINARY_DIR}/OmbrelConfig.cmake
    INSTALL_DESTINATION ${OMBREL_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OmbrelConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OmbrelConfig.cmake ${PROJECT_BINARY_DIR}/OmbrelConfigVersion.cmake
    DESTINATION ${OMBREL_CMAKE_DIR} COMPONENT development)

file(RELATIVE_PATH OMBREL_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file(cmake/ombrel.pc.in ${PROJECT_BINARY_DIR}/ombrel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ombrel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# Each package brings the licences.
set(OMBREL_LIBRARY_PACKAGE libombrel${PROJECT_VERSION_MAJOR})
install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${OMBREL_LIBRARY_PACKAGE} COMPONENT library)
install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libombrel-dev COMPONENT development)
install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ombrel COMPONENT host)
if(OMBREL_DOCS)
    install(DIRECTORY ${OMBREL_DOCS_DIR}/html DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libombrel-doc COMPONENT reference)
    install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libombrel-doc COMPONENT reference)
endif()

# The host finds the library beside it, wherever the tree is put; in the system's own folders the loader does.
set_target_properties(ombrel_command PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    file(RELATIVE_PATH OMBREL_BIN_TO_LIB "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
    set_target_properties(ombrel_command PROPERTIES INSTALL_RPATH "$ORIGIN/${OMBREL_BIN_TO_LIB}")
endif()
install(TARGETS ombrel_command RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT host)

# Debian's zsh does not look into the site's functions under /usr.
if(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set(OMBREL_ZSH_DIR ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
else()
    set(OMBREL_ZSH_DIR ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
endif()
set(OMBREL_REFERENCE_DIR ${PROJECT_BINARY_DIR}/reference)
install(FILES ${OMBREL_REFERENCE_DIR}/ombrel.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT host)
install(FILES ${OMBREL_REFERENCE_DIR}/ombrel.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ombrel
    COMPONENT host)
install(FILES ${OMBREL_REFERENCE_DIR}/ombrel.zsh DESTINATION ${OMBREL_ZSH_DIR} RENAME _ombrel COMPONENT host)
install(FILES ${OMBREL_REFERENCE_DIR}/ombrel.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT host)
