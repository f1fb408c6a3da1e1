# The linker's view of frame/exports.def and frame/aliases.def: KVRS_VERSION_SCRIPT, the file that makes the listed
# names visible, under the version node KVRS_6, and no others, and KVRS_ALIAS_LINK_OPTIONS, which give second names their addresses.
# SPDX-License-Identifier: MIT

set(KVRS_VERSION_SCRIPT ${PROJECT_BINARY_DIR}/kvrs.map)

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  ${PROJECT_SOURCE_DIR}/frame/exports.def ${PROJECT_SOURCE_DIR}/frame/aliases.def)

file(STRINGS ${PROJECT_SOURCE_DIR}/frame/exports.def lines REGEX "^ +kvrs[A-Za-z0-9_]+ @[0-9]+$")
list(TRANSFORM lines REPLACE "^ +(kvrs[A-Za-z0-9_]+) @[0-9]+$" "    \\1")
list(JOIN lines ";\n" names)
file(CONFIGURE OUTPUT ${KVRS_VERSION_SCRIPT} CONTENT "KVRS_6 {\n  global:\n${names};\n  local:\n    *;\n};\n")

file(STRINGS ${PROJECT_SOURCE_DIR}/frame/aliases.def lines REGEX "^kvrs[A-Za-z0-9_]+ = kvrs[A-Za-z0-9_]+$")
list(TRANSFORM lines REPLACE "^(kvrs[A-Za-z0-9_]+) = (kvrs[A-Za-z0-9_]+)$" "LINKER:--defsym,\\1=\\2")
set(KVRS_ALIAS_LINK_OPTIONS ${lines})
