# Qt writes C++ of its own for a QML module (compiled bindings, type registrations); it is not ours
# to keep clean. To be called once for a module, after qt_add_qml_module.
function(tessaly_unwarn_generated target)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    if(source MATCHES "/\\.rcc/qmlcache/|_qmltyperegistrations\\.cpp$|_qmlcache_loader\\.cpp$")
      set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS -w)
    endif()
  endforeach()
endfunction()
