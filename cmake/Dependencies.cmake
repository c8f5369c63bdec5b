find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets PrintSupport Svg Xml Test)
find_package(SQLite3 REQUIRED)
find_package(PostgreSQL REQUIRED)
find_package(GTest REQUIRED)

# Neither brings a CMake package file.
find_package(PkgConfig REQUIRED)
pkg_check_modules(HUNSPELL REQUIRED IMPORTED_TARGET hunspell)
pkg_check_modules(LIBMDB REQUIRED IMPORTED_TARGET libmdb glib-2.0)
find_library(ZINT_LIBRARY zint REQUIRED)

if(MIRSA_BENCH)
  find_package(benchmark REQUIRED)
endif()

# Paths of each target, which nothing here uses, in every file that includes Qt Test.
set_target_properties(Qt6::Test PROPERTIES INTERFACE_COMPILE_DEFINITIONS QT_TESTLIB_LIB)
