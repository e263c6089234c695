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

# Flags of the sanitizers. They come behind the others, some of which they take back.
add_library(tessaly_instrumented INTERFACE)
# What the product is built with.
add_library(tessaly_compiler INTERFACE)
target_link_libraries(tessaly_compiler INTERFACE tessaly_flags tessaly_instrumented)
# What tests are built with.
add_library(tessaly_tested INTERFACE)
target_link_libraries(tessaly_tested INTERFACE tessaly_flags)

if(TESSALY_SANITIZE)
  if(TESSALY_SANITIZE MATCHES thread)
    # It must see every synchronisation, also in tests. Optimising assertions takes more time than it saves.
    target_link_libraries(tessaly_tested INTERFACE tessaly_instrumented)
    target_compile_options(tessaly_tested INTERFACE -O0)
    # It does not know fences. Qt's headers have some, and our code has none.
    target_compile_options(tessaly_flags INTERFACE -Wno-tsan)
  endif()
  # The address sanitizer and that for undefined behaviour look at the code of the product. The objects of
  # the tests are the same as without them, so that a compiler cache has them from another build:
  # compiling them took half of the time of the whole build. Where a test and the product both have a
  # copy of an inline function that is not inlined, the linker takes the copy of the test.
  target_compile_options(tessaly_instrumented INTERFACE
    -fsanitize=${TESSALY_SANITIZE} -fno-omit-frame-pointer)
  # The instrumentation makes gcc see null dereferences and uninitialised members that are not there.
  # gcc 12 also warns falsely of writes beyond the strings of its library where these are precompiled.
  # The builds without sanitizers look for all these.
  target_compile_options(tessaly_instrumented INTERFACE -Wno-null-dereference
    "$<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized;-Wno-array-bounds;-Wno-restrict;-Wno-stringop-overflow;-Wno-stringop-overread>")
  if(TESSALY_SANITIZE MATCHES undefined)
    # It opens a pipe to look at an object's table of virtual functions. Tests count calls to the
    # system, let them fail, and leave no descriptor for it.
    target_compile_options(tessaly_instrumented INTERFACE -fno-sanitize=vptr)
  endif()
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
