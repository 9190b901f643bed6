# The gallery's page shows the code of each picture, and has its style and script inside: they go into the program as
# texts. Sets galleryTexts to the source that holds them.
function(ombrel_read_text path result)
    file(READ ${path} text)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${path})
    set(${result} "R\"gallery(${text})gallery\"" PARENT_SCOPE)
endfunction()

set(gallerySources "")
foreach(family Charts Graphs Scenes Solids)
    ombrel_read_text(${CMAKE_CURRENT_LIST_DIR}/pictures/${family}.cpp text)
    string(APPEND gallerySources "${text},\n")
endforeach()
ombrel_read_text(${CMAKE_CURRENT_LIST_DIR}/Helpers.h galleryHelpers)
ombrel_read_text(${CMAKE_CURRENT_LIST_DIR}/Data.h galleryData)
ombrel_read_text(${CMAKE_CURRENT_LIST_DIR}/Page.css galleryStyle)
ombrel_read_text(${CMAKE_CURRENT_LIST_DIR}/Page.js galleryScript)
set(galleryTexts ${CMAKE_CURRENT_BINARY_DIR}/GalleryTexts.cpp)
configure_file(${CMAKE_CURRENT_LIST_DIR}/Texts.cpp.in ${galleryTexts} @ONLY)
