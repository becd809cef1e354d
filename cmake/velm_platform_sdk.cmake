# The host platform's SDK at VELM_PLATFORM_ROOT, with include/ and lib/: the targets velm_zavra::velm_api_core and
# velm_zavra::velm_api_ext. Used by this build, and by applications that link the library.
foreach(name IN ITEMS velm_api_core velm_api_ext)
  if(NOT TARGET velm_zavra::${name})
    find_library(library ${name} PATHS ${VELM_PLATFORM_ROOT}/lib
                 NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH NO_CACHE REQUIRED)
    add_library(velm_zavra::${name} UNKNOWN IMPORTED)
    set_target_properties(velm_zavra::${name} PROPERTIES IMPORTED_LOCATION ${library}
                          INTERFACE_INCLUDE_DIRECTORIES ${VELM_PLATFORM_ROOT}/include)
    unset(library)
  endif()
endforeach()
