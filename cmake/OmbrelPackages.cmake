# What `cpack` makes of an installed tree: the Debian packages libombrel1, libombrel-dev and ombrel, and of the
# reference libombrel-doc.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ombrel)
set(CPACK_PACKAGE_VENDOR "The Ombrel developers")
set(CPACK_PACKAGE_CONTACT "The Ombrel developers <developers@ombrel.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)

set(CPACK_COMPONENTS_ALL library development host)
if(OMBREL_DOCS)
    list(APPEND CPACK_COMPONENTS_ALL reference)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(packageVersion "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${OMBREL_LIBRARY_PACKAGE})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "The library: draws charts in memory, into other drawings and on printed pages.")
# Text has the sizes that the documents were laid out with only in the first face; the second has the raised digits of
# powers of ten. The others are opened by name when the first 3D picture is drawn.
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS
    "fonts-liberation, fonts-dejavu-core, libegl1, libopengl0, libglu1-mesa, libgl1-mesa-dri")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libombrel-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "The headers: what programs that use libombrel are compiled with.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${OMBREL_LIBRARY_PACKAGE} ${packageVersion}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libombrel-doc)

set(CPACK_DEBIAN_HOST_PACKAGE_NAME ombrel)
set(CPACK_DEBIAN_HOST_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_HOST_DESCRIPTION "The program: lines, bars, areas, histograms and more from CSV files and graph documents.")
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS "${OMBREL_LIBRARY_PACKAGE} ${packageVersion}")
set(CPACK_DEBIAN_HOST_PACKAGE_SHLIBDEPS ON)
# The library is among the packages, not among those that are installed here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/ombrel)

set(CPACK_DEBIAN_REFERENCE_PACKAGE_NAME libombrel-doc)
set(CPACK_DEBIAN_REFERENCE_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_REFERENCE_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_REFERENCE_DESCRIPTION "The reference of the headers, to read in a browser.")

include(CPack)
