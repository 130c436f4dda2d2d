# Objects are shared between the presets' and checkouts' build folders: paths are made relative to the
# source, and a precompiled header counts as its content, not its time.
find_program(VELQ_CCACHE ccache)
if(VELQ_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${VELQ_CCACHE})
endif()
