# Fails when a source file includes a header of a folder after its own in the
# list below: the core library's folders come first, so core code never
# includes the windows, and within each library a folder may include only the
# folders listed before it (or itself), so no folder depends on one that
# depends on it. The path of a file tells its library: src/core/<folder>,
# src/ui/<folder>, and src/app for the executable. Qt SQL is included only by
# the statistics store's own files (src/core/stats/stats_store*, store_*,
# sqlite_*, pg_* and server_*); everything else reaches the store through its
# interfaces.
# Run as: cmake -DSOURCE_DIR=<src> -P check_layers.cmake
get_filename_component(SOURCE_DIR ${SOURCE_DIR} ABSOLUTE)
set(layers
  core/session core/sound core/stats core/board core/players core/help core/games
  core/practice core/training core/statistics core/review core/advice core/export core/opponent core/net core/startup
  ui/sound ui/board ui/dialogs ui/players ui/help ui/advice ui/net ui/opponent ui/practice ui/training
  ui/review ui/statistics ui/play ui/startup
  app)

file(GLOB_RECURSE sources RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/*.h ${SOURCE_DIR}/*.cpp)
set(failures "")
foreach(source ${sources})
  if(source MATCHES "^app/")
    set(folder app)
  else()
    string(REGEX MATCH "^[a-z]+/[a-z_]+" folder ${source})
  endif()
  list(FIND layers "${folder}" own)
  if(own EQUAL -1)
    string(APPEND failures "\n  ${source}: folder ${folder} has no place in the layers")
    continue()
  endif()
  if(NOT source MATCHES "^core/stats/(stats_store|store_|sqlite_|pg_|server_)")
    file(STRINGS ${SOURCE_DIR}/${source} sql_includes REGEX "^[ \t]*#[ \t]*include[ \t]*<Q(t)?Sql")
    foreach(line ${sql_includes})
      string(APPEND failures "\n  ${source} includes Qt SQL outside the statistics store: ${line}")
    endforeach()
  endif()
  file(STRINGS ${SOURCE_DIR}/${source} includes REGEX "^#include \"[a-z_]+/")
  foreach(line ${includes})
    string(REGEX REPLACE "^#include \"([a-z]+/[a-z_]+)/.*" "\\1" used "${line}")
    list(FIND layers "${used}" level)
    if(level EQUAL -1 OR level GREATER own)
      string(APPEND failures "\n  ${source} includes ${used}/")
    endif()
  endforeach()
endforeach()
if(failures)
  message(FATAL_ERROR "Folders out of layer order, or Qt SQL outside the statistics store:${failures}")
endif()
