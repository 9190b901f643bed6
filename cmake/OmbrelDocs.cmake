# The reference of the installed headers, made by Doxygen when OMBREL_DOCS is on: a group a folder, described by the table in
# docs/architecture.md.
set(OMBREL_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
if(NOT OMBREL_DOCS)
    return()
endif()
find_program(OMBREL_DOXYGEN doxygen REQUIRED)

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS docs/architecture.md)
file(READ docs/architecture.md architecture)
file(GLOB headers CONFIGURE_DEPENDS ombrel/*.h)
set(OMBREL_FOLDER_LIST "")
set(groups "")
# The lowest comes first in the list of folders, and last in the reference.
foreach(folder IN LISTS OMBREL_PUBLIC_FOLDERS ITEMS ".")
    if(folder STREQUAL ".")
        set(group ombrel)
        set(path ombrel)
        set(about "what programs call first")
    else()
        string(REPLACE "/" "_" group ${folder})
        set(path ombrel/${folder})
        set(about "")
        if(architecture MATCHES "\n\\| `${path}` \\| ([^\n]*) \\|\n")
            set(about "${CMAKE_MATCH_1}")
        endif()
        file(GLOB ownHeaders CONFIGURE_DEPENDS ${path}/*.h)
        list(PREPEND headers ${ownHeaders})
    endif()
    string(PREPEND groups "/** @defgroup ${group} ${path}\n${about} */\n")
    string(PREPEND OMBREL_FOLDER_LIST "- @ref ${group} \"${path}\": ${about}\n")
endforeach()

file(GLOB pages CONFIGURE_DEPENDS docs/*.md docs/tutorial/*.md)

# The pictures of the tutorial are drawn by the programs that its pages show.
set(pictureDir ${OMBREL_DOCS_DIR}/tutorial)
file(MAKE_DIRECTORY ${pictureDir})
file(GLOB programs CONFIGURE_DEPENDS examples/families/*.cpp)
set(pictures "")
foreach(program IN LISTS programs)
    get_filename_component(name ${program} NAME_WE)
    add_executable(ombrel_example_${name} EXCLUDE_FROM_ALL ${program})
    target_link_libraries(ombrel_example_${name} PRIVATE ombrel)
    set(arguments "")
    if(name STREQUAL "mesh_3d")
        set(arguments ${PROJECT_SOURCE_DIR}/examples/beam.tvm)
    endif()
    # Colour maps are found beside the folder of the program.
    set_target_properties(ombrel_example_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin/examples)
    add_custom_command(OUTPUT ${pictureDir}/${name}.png COMMAND ombrel_example_${name} ${arguments}
        DEPENDS ombrel_example_${name} ombrel_colour_maps WORKING_DIRECTORY ${pictureDir} VERBATIM)
    list(APPEND pictures ${pictureDir}/${name}.png)
endforeach()
configure_file(docs/reference/main.md ${OMBREL_DOCS_DIR}/main.md @ONLY)
file(CONFIGURE OUTPUT ${OMBREL_DOCS_DIR}/groups.dox CONTENT "${groups}" @ONLY)
set(input ${OMBREL_DOCS_DIR}/main.md ${OMBREL_DOCS_DIR}/groups.dox ${pages} ${headers})
list(JOIN input "\" \"" OMBREL_DOCS_INPUT)
configure_file(docs/reference/Doxyfile.in ${OMBREL_DOCS_DIR}/Doxyfile @ONLY)

# A class, an enumeration or a function beside the classes without a comment is a warning. Members of classes, and constants, may do
# without: many are told enough by their names, or by the comment of the one before them.
add_custom_command(OUTPUT ${OMBREL_DOCS_DIR}/html/index.html
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${OMBREL_DOCS_DIR}/html
    COMMAND ${OMBREL_DOXYGEN} ${OMBREL_DOCS_DIR}/Doxyfile
    COMMAND sed -E "/\\(((function|typedef|friend)\\) of (class|struct|union)|variable\\) of) .* is not documented/d"
        ${OMBREL_DOCS_DIR}/all-warnings > ${OMBREL_DOCS_DIR}/warnings
    DEPENDS ${OMBREL_DOCS_DIR}/Doxyfile docs/reference/header.awk examples/host/main.cpp ${programs} ${pictures} ${input}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} COMMENT "Making the reference" VERBATIM)
add_custom_target(ombrel_docs ALL DEPENDS ${OMBREL_DOCS_DIR}/html/index.html)
