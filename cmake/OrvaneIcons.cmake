# SPDX-License-Identifier: GPL-3.0-or-later
# For builds without Qt's module for SVG: the icons of a resource file as pictures of the same names.
find_program(ORVANE_RSVG rsvg-convert REQUIRED)

# orvane_icon_pictures(QRC RESULT): the resource file that names the pictures.
function(orvane_icon_pictures qrc result)
  file(STRINGS ${qrc} lines)
  set(text "")
  foreach(line IN LISTS lines)
    if(line MATCHES "<file>(.*)\\.svg</file>")
      set(name ${CMAKE_MATCH_1})
      set(picture ${CMAKE_CURRENT_BINARY_DIR}/pictures/${name}.png)
      get_filename_component(folder ${picture} DIRECTORY)
      file(MAKE_DIRECTORY ${folder})
      execute_process(COMMAND ${ORVANE_RSVG} --width 96 --height 96 --output ${picture}
                              ${CMAKE_CURRENT_SOURCE_DIR}/${name}.svg
                      COMMAND_ERROR_IS_FATAL ANY)
      string(REPLACE ".svg" ".png" line ${line})
    endif()
    string(APPEND text "${line}\n")
  endforeach()
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/pictures/icons.qrc "${text}")
  set(${result} ${CMAKE_CURRENT_BINARY_DIR}/pictures/icons.qrc PARENT_SCOPE)
endfunction()
