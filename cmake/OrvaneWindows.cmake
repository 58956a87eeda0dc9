# SPDX-License-Identifier: GPL-3.0-or-later
# What Windows reads in a program file: its icon, its version, and what it expects of the system.
enable_language(RC)
find_program(ORVANE_RSVG rsvg-convert REQUIRED)
find_program(ORVANE_ICOTOOL icotool REQUIRED)

# orvane_windows_resources(TARGET DRAWING): the drawing becomes the icon.
function(orvane_windows_resources target drawing)
  set(folder ${CMAKE_CURRENT_BINARY_DIR}/resources)
  set(pictures)
  set(draw)
  foreach(size IN ITEMS 16 24 32 48 64 256)
    list(APPEND draw COMMAND ${ORVANE_RSVG} -w ${size} -h ${size} -o ${folder}/${size}.png
                             ${CMAKE_CURRENT_SOURCE_DIR}/${drawing})
    list(APPEND pictures ${folder}/${size}.png)
  endforeach()
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${folder}/orvane.ico ${draw}
    COMMAND ${ORVANE_ICOTOOL} --create --output=${folder}/orvane.ico ${pictures}
    DEPENDS ${drawing} VERBATIM)
  string(REPLACE "." "," ORVANE_VERSION_NUMBERS "${PROJECT_VERSION}.0.0")
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/orvane.rc.in ${folder}/orvane.rc @ONLY)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/orvane.manifest ${folder}/orvane.manifest
                 COPYONLY)
  set_source_files_properties(${folder}/orvane.rc PROPERTIES
    OBJECT_DEPENDS "${folder}/orvane.ico;${folder}/orvane.manifest")
  target_sources(${target} PRIVATE ${folder}/orvane.rc ${folder}/orvane.ico)
  target_include_directories(${target} PRIVATE ${folder})
endfunction()
