# Headers of the standard library, of GoogleTest and of Qt are parsed once for all targets of a kind
# instead of once for each source that includes them. A folder that uses Qt sets TESSALY_PRECOMPILED
# to qt. A source still includes all that it uses: clang-tidy reads changed ones without this, and CI has
# a build without it.
option(TESSALY_PRECOMPILED_HEADERS "Parse the headers of libraries once for many sources" ON)
set(TESSALY_PRECOMPILED plain)

set(tessaly_plain_headers
  <algorithm> <array> <atomic> <cerrno> <charconv> <chrono> <cmath> <cstddef> <cstdint> <cstdlib> <cstring>
  <filesystem> <functional> <iterator> <limits> <map> <memory> <mutex> <optional> <set> <span> <string>
  <string_view> <system_error> <unordered_map> <utility> <variant> <vector>)
set(tessaly_qt_headers
  <QAbstractListModel> <QByteArray> <QColor> <QCoreApplication> <QDateTime> <QDir> <QEvent> <QFile>
  <QFont> <QGuiApplication> <QHash> <QImage> <QKeyEvent> <QList> <QMetaType> <QMouseEvent> <QObject>
  <QPainter> <QPainterPath> <QPointer> <QQmlComponent> <QQmlContext> <QQmlEngine> <QQuickItem>
  <QQuickWindow> <QString> <QStringList> <QTimer> <QUrl> <QVariant> <QtQml/qqml.h>
  <QtQml/qqmlprivate.h>)
set(tessaly_test_headers <fstream> <gmock/gmock.h> <gtest/gtest.h> <ostream> <sstream> <thread>)

# tessaly_precompiled(TARGET [TEST]): lets a target use what is compiled for its folder's kind.
function(tessaly_precompiled target)
  if(NOT TESSALY_PRECOMPILED_HEADERS)
    return()
  endif()
  set(kind ${TESSALY_PRECOMPILED})
  if("TEST" IN_LIST ARGN)
    string(APPEND kind _test)
  endif()
  tessaly_compile_headers(${kind})
  target_precompile_headers(${target} REUSE_FROM tessaly_${kind}_headers)
endfunction()

# Compiles the headers of a kind with the flags of the targets that use them, once. What these define
# beside that (QT_GUI_LIB and the like) does no harm, as the headers do not ask for it.
function(tessaly_compile_headers kind)
  set(target tessaly_${kind}_headers)
  if(TARGET ${target})
    return()
  endif()
  set(source ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(${target} OBJECT ${source})
  set_target_properties(${target} PROPERTIES AUTOMOC OFF)
  target_precompile_headers(${target} PRIVATE ${tessaly_plain_headers})
  if(kind MATCHES ^qt)
    target_link_libraries(${target} PRIVATE Qt6::Core)
    target_include_directories(${target} SYSTEM PRIVATE
      $<TARGET_PROPERTY:Qt6::Quick,INTERFACE_INCLUDE_DIRECTORIES>)
    target_precompile_headers(${target} PRIVATE ${tessaly_qt_headers})
  endif()
  if(kind MATCHES _test$)
    target_link_libraries(${target} PRIVATE tessaly_tested GTest::gtest GTest::gmock)
    target_precompile_headers(${target} PRIVATE ${tessaly_test_headers})
    # Tests are programs, for which the compiler is told so.
    set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
    target_compile_options(${target} BEFORE PRIVATE ${CMAKE_CXX_COMPILE_OPTIONS_PIE})
  else()
    target_link_libraries(${target} PRIVATE tessaly_compiler)
  endif()
endfunction()

# A compiler that preprocesses for the cache must name the compiled headers, and clang must not write
# the time into them.
if(TESSALY_PRECOMPILED_HEADERS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(tessaly_flags INTERFACE -fpch-preprocess)
  # Optimising fully, gcc 12 sees writes beyond the strings of its library if these are precompiled.
  target_compile_options(tessaly_flags INTERFACE
    "$<$<CONFIG:Release>:-Wno-array-bounds;-Wno-restrict;-Wno-stringop-overflow;-Wno-stringop-overread>")
elseif(TESSALY_PRECOMPILED_HEADERS AND CMAKE_CXX_COMPILER_ID MATCHES Clang)
  target_compile_options(tessaly_flags INTERFACE "SHELL:-Xclang -fno-pch-timestamp")
endif()
