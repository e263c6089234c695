# Flags that every target of the project is built with.
add_library(tessaly_compiler INTERFACE)
target_compile_options(tessaly_compiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wnull-dereference -Wimplicit-fallthrough -Wcast-align)
# Optimising fully, gcc 12 sees null dereferences in its own streams that are not there.
target_compile_options(tessaly_compiler INTERFACE $<$<CONFIG:Release>:-Wno-null-dereference>)
if(TESSALY_WARNINGS_AS_ERRORS)
  target_compile_options(tessaly_compiler INTERFACE -Werror)
endif()
if(TESSALY_SANITIZE)
  target_compile_options(tessaly_compiler INTERFACE
    -fsanitize=${TESSALY_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(tessaly_compiler INTERFACE -fsanitize=${TESSALY_SANITIZE})
  # The sanitizers' own instrumentation makes gcc see null dereferences that are not there.
  target_compile_options(tessaly_compiler INTERFACE -Wno-null-dereference)
  # Nor are the strings of its library written beyond their ends, as gcc 12 says of them where they are
  # precompiled. The builds without sanitizers look for that.
  target_compile_options(tessaly_compiler INTERFACE
    "$<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds;-Wno-restrict;-Wno-stringop-overflow;-Wno-stringop-overread>")
  if(TESSALY_SANITIZE MATCHES undefined)
    # It opens a pipe to look at an object's table of virtual functions. Tests count calls to the
    # system, let them fail, and leave no descriptor for it.
    target_compile_options(tessaly_compiler INTERFACE -fno-sanitize=vptr)
  endif()
  if(TESSALY_SANITIZE MATCHES thread)
    # Qt's headers have fences, of which the thread sanitizer knows nothing; no code of ours has one.
    target_compile_options(tessaly_compiler INTERFACE -Wno-tsan)
  endif()
endif()

# What tests are built with. What is tested is what is worth optimising: under the sanitizers,
# optimising assertions takes more time than it saves.
add_library(tessaly_tested INTERFACE)
target_link_libraries(tessaly_tested INTERFACE tessaly_compiler)
if(TESSALY_SANITIZE)
  target_compile_options(tessaly_tested INTERFACE -O0)
endif()

# A compiler cache turns a second build of the same sources into a copy, where there is one. It keeps
# nothing that uses precompiled headers unless it is told to overlook which macros they were compiled
# with, and when: the compiler itself refuses those that do not fit. They are large, and not to be read
# again for each source.
find_program(TESSALY_CCACHE ccache)
if(TESSALY_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
    /usr/bin/env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_INODECACHE=true
    ${TESSALY_CCACHE})
endif()
