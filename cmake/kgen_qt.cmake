# Targets that use Qt.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets PrintSupport Svg Test)

# kgen_qt_library(NAME [DEPENDS other...]): like kgen_library, with Qt.
function(kgen_qt_library name)
  kgen_library(${name} ${ARGN})
  # Not the targets below, or nothing would compile before they are built.
  set_target_properties(kgen_${name} PROPERTIES AUTOMOC ON AUTOGEN_ORIGIN_DEPENDS OFF)
  target_link_libraries(kgen_${name} PUBLIC Qt6::Widgets Qt6::PrintSupport Qt6::Svg)
  # "slots" and "signals" are words of loggers and buses here.
  target_compile_definitions(kgen_${name} PUBLIC QT_NO_KEYWORDS)
  kgen_precompile(kgen_${name})
  kgen_unite(kgen_${name})
endfunction()

# Qt's headers take longer than what is written with them: the first target that uses them compiles
# them for all others. A compiler cache does the same better.
function(kgen_precompile target)
  if(CMAKE_CXX_COMPILER_LAUNCHER)
    return()
  elseif(target STREQUAL kgen_pictures)
    target_precompile_headers(${target} PRIVATE <QtWidgets>)
  else()
    target_precompile_headers(${target} REUSE_FROM kgen_pictures)
  endif()
endfunction()

# Sanitizers make code slow to compile: there the files of a target go through the compiler by the
# dozen. All other builds compile each on its own and find a header that is missing.
function(kgen_unite target)
  if(KGEN_SANITIZE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
  endif()
endfunction()
