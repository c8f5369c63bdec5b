# Compiler settings shared by every target; ccache and lld are used where present.
add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(MIRSA_WERROR)
  add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_FOREACH)

if(MIRSA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# As quick as mold, whose version in Debian 12 goes round in circles over programs of certain sizes.
find_program(LLD ld.lld)
if(LLD)
  add_link_options(-fuse-ld=lld)
endif()

find_program(CCACHE ccache)
if(CCACHE)
  # A precompiled header is cached only with these, and for a clone at another path too.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_INODECACHE=1
      CCACHE_PCH_EXTSUM=1 CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
  # Behind -Xclang, as CMake has it, ccache would take the path for a part of the key.
  set(CMAKE_CXX_COMPILE_OPTIONS_USE_PCH -include-pch <PCH_FILE>)
endif()
