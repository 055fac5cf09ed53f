# Fails when a source file includes a header of a folder at its own level or
# above: each folder of src/ may include only the folders listed before it,
# so no folder depends on one that depends on it.
# Run as: cmake -DSOURCE_DIR=<src> -P check_layers.cmake
get_filename_component(SOURCE_DIR ${SOURCE_DIR} ABSOLUTE)
set(layers session sound stats board dialogs games net opponent practice review play startup)

file(GLOB_RECURSE sources RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/*.h ${SOURCE_DIR}/*.cpp)
set(failures "")
foreach(source ${sources})
  string(REGEX MATCH "^[^/]+" folder ${source})
  list(FIND layers ${folder} own)
  if(own EQUAL -1)
    string(APPEND failures "\n  ${source}: folder ${folder} has no place in the layers")
    continue()
  endif()
  file(STRINGS ${SOURCE_DIR}/${source} includes REGEX "^#include \"[a-z_]+/")
  foreach(line ${includes})
    string(REGEX REPLACE "^#include \"([a-z_]+)/.*" "\\1" used "${line}")
    list(FIND layers ${used} level)
    if(level EQUAL -1 OR level GREATER own)
      string(APPEND failures "\n  ${source} includes ${used}/")
    endif()
  endforeach()
endforeach()
if(failures)
  message(FATAL_ERROR "Folders out of layer order:${failures}")
endif()
