# What `cmake --install` lays out below the prefix, all of it free to move with the prefix as a whole. The names are those
# of GNUInstallDirs, here with its usual values:
#
#   include/                              headers
#   lib/, lib/glibc-hwcaps/x86-64-v*/     64-bit modules and core library
#   lib32/                                32-bit module and core library (KVRS_INSTALL_LIBDIR_32)
#   lib/pkgconfig/, lib32/pkgconfig/      kvrs.pc
#   lib/cmake/kvrs/                       the CMake package, for both ABIs
# SPDX-License-Identifier: MIT

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kvrs)

# The way from a directory below the prefix to another one.
function(kvrs_way from to result)
  if(IS_ABSOLUTE ${to})
    set(${result} ${to} PARENT_SCOPE)
  elseif(IS_ABSOLUTE ${from})
    set(${result} ${CMAKE_INSTALL_PREFIX}/${to} PARENT_SCOPE)
  else()
    file(RELATIVE_PATH way /prefix/${from} /prefix/${to})
    set(${result} "\${pcfiledir}/${way}" PARENT_SCOPE)
  endif()
endfunction()

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

foreach(row IN LISTS KVRS_ABI_TABLE)
  string(REPLACE "|" ";" cells "${row}")
  list(GET cells 0 bits)
  list(GET cells 1 base)
  list(GET cells 2 dir)
  if(NOT TARGET kvrscore_${bits})
    continue()
  endif()
  if(TARGET kvrs_${base})
    install(TARGETS kvrs_${base} kvrscore_${bits} EXPORT kvrs-targets-${bits} LIBRARY DESTINATION ${dir})
    install(EXPORT kvrs-targets-${bits} NAMESPACE kvrs:: DESTINATION ${package_dir})
    kvrs_way(${dir}/pkgconfig ${dir} KVRS_PC_LIBDIR)
    kvrs_way(${dir}/pkgconfig ${CMAKE_INSTALL_INCLUDEDIR} KVRS_PC_INCLUDEDIR)
    configure_file(cmake/kvrs.pc.in pkgconfig/${bits}/kvrs.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${bits}/kvrs.pc DESTINATION ${dir}/pkgconfig)
  else()
    install(TARGETS kvrscore_${bits} LIBRARY DESTINATION ${dir})
  endif()
endforeach()

foreach(module IN LISTS KVRS_MODULES)
  kvrs_module_row(${module} row)
  if(row_dir MATCHES "glibc-hwcaps")
    # Nobody links against these: the loader finds them by the name libkvrs.so.6.
    install(TARGETS kvrs_${module} LIBRARY DESTINATION ${row_dir} NAMELINK_SKIP)
  endif()
endforeach()

write_basic_package_version_file(${PROJECT_BINARY_DIR}/kvrs-config-version.cmake
  COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
install(FILES cmake/kvrs-config.cmake ${PROJECT_BINARY_DIR}/kvrs-config-version.cmake DESTINATION ${package_dir})
