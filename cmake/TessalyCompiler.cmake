# Flags that every target of the project is built with, beside those of the sanitizers.
add_library(tessaly_flags INTERFACE)
target_compile_options(tessaly_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wnull-dereference -Wimplicit-fallthrough -Wcast-align)
# Optimising fully, gcc 12 sees null dereferences in its own streams that are not there.
target_compile_options(tessaly_flags INTERFACE $<$<CONFIG:Release>:-Wno-null-dereference>)
if(TESSALY_WARNINGS_AS_ERRORS)
  target_compile_options(tessaly_flags INTERFACE -Werror)
endif()
if(TESSALY_SANITIZE)
  # The instrumentation makes gcc see null dereferences that are not there.
  target_compile_options(tessaly_flags INTERFACE -Wno-null-dereference)
  # gcc 12 also warns falsely of writes beyond the strings of its library where these are precompiled.
  # The builds without sanitizers look for such writes.
  target_compile_options(tessaly_flags INTERFACE
    "$<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds;-Wno-restrict;-Wno-stringop-overflow;-Wno-stringop-overread>")
  if(TESSALY_SANITIZE MATCHES thread)
    # The thread sanitizer does not know fences. Qt's headers have some, and our code has none.
    target_compile_options(tessaly_flags INTERFACE -Wno-tsan)
  endif()
endif()

# What the product is built with.
add_library(tessaly_compiler INTERFACE)
target_link_libraries(tessaly_compiler INTERFACE tessaly_flags)
# What tests are built with. Under the sanitizers, optimising assertions takes more time than it saves,
# and looking for undefined behaviour in them takes a third of the time of their compilation.
add_library(tessaly_tested INTERFACE)
target_link_libraries(tessaly_tested INTERFACE tessaly_flags)
if(TESSALY_SANITIZE)
  target_compile_options(tessaly_compiler INTERFACE
    -fsanitize=${TESSALY_SANITIZE} -fno-omit-frame-pointer)
  if(TESSALY_SANITIZE MATCHES undefined)
    # It opens a pipe to look at an object's table of virtual functions. Tests count calls to the
    # system, let them fail, and leave no descriptor for it.
    target_compile_options(tessaly_compiler INTERFACE -fno-sanitize=vptr)
  endif()
  string(REPLACE ",undefined" "" tested ${TESSALY_SANITIZE})
  target_compile_options(tessaly_tested INTERFACE -O0 -fsanitize=${tested} -fno-omit-frame-pointer)
  target_link_options(tessaly_flags INTERFACE -fsanitize=${TESSALY_SANITIZE})
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
