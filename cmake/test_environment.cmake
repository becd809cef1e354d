# CTest reads this before it runs tests: they see the same environment whatever the caller has in theirs.
foreach(variable IN ITEMS VELM_DEBUG VELM_I2C_BUS_DIR COLUMNS LINES LANGUAGE XDG_RUNTIME_DIR BASH_ENV CDPATH DESTDIR
                          GTEST_FILTER GTEST_OUTPUT PKG_CONFIG_PATH)
  unset(ENV{${variable}})
endforeach()
set(ENV{LC_ALL} C.UTF-8)
