# find_package(kvrs): targets kvrs::kvrs and kvrs::core of the ABI that is being compiled for.
# SPDX-License-Identifier: MIT
math(EXPR kvrs_bits "8 * ${CMAKE_SIZEOF_VOID_P}")
if(EXISTS "${CMAKE_CURRENT_LIST_DIR}/kvrs-targets-${kvrs_bits}.cmake")
  include("${CMAKE_CURRENT_LIST_DIR}/kvrs-targets-${kvrs_bits}.cmake")
else()
  set(kvrs_FOUND FALSE)
  set(kvrs_NOT_FOUND_MESSAGE "this installation of kvrs has no ${kvrs_bits}-bit libraries")
endif()
unset(kvrs_bits)
