# How a room becomes libraries. Logic links Qt6::Core alone, so a widget header is not even found there;
# screens link Qt6::Widgets and the logic of the same room. What is not linked cannot be used by accident.

add_library(kalvo_warnings INTERFACE)
target_compile_options(kalvo_warnings INTERFACE
  $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wshadow -Wconversion -Werror>
  $<$<CXX_COMPILER_ID:MSVC>:/W4 /WX /utf-8>)
if(KALVO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 reports false positives of this kind from inside std::string and Qt containers at -O2.
  target_compile_options(kalvo_warnings INTERFACE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds -Wno-maybe-uninitialized)
endif()

# The first target of a kind precompiles the headers, the others use what it made: making them costs more than most rooms.
function(kalvo_precompile target first)
  if(target STREQUAL first OR NOT TARGET ${first})
    target_precompile_headers(${target} PRIVATE ${ARGN})
  else()
    target_precompile_headers(${target} REUSE_FROM ${first})
  endif()
endfunction()

# kalvo_logic_room(NAME room SOURCES a.cpp ... [LINKS lower_logic ...]) -> library ${room}_logic
function(kalvo_logic_room)
  cmake_parse_arguments(ROOM "" "NAME" "SOURCES;LINKS" ${ARGN})
  add_library(${ROOM_NAME}_logic STATIC ${ROOM_SOURCES})
  target_include_directories(${ROOM_NAME}_logic PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${ROOM_NAME}_logic PUBLIC Qt6::Core ${ROOM_LINKS} PRIVATE kalvo_warnings)
  target_compile_definitions(${ROOM_NAME}_logic PUBLIC QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY)
  kalvo_precompile(${ROOM_NAME}_logic platform_logic ${CMAKE_SOURCE_DIR}/cmake/pch_logic.h)
endfunction()

# kalvo_screens_room(NAME room SOURCES ... [LINKS ...]) -> library ${room}_screens
function(kalvo_screens_room)
  cmake_parse_arguments(ROOM "" "NAME" "SOURCES;LINKS" ${ARGN})
  add_library(${ROOM_NAME}_screens STATIC ${ROOM_SOURCES})
  target_include_directories(${ROOM_NAME}_screens PUBLIC ${CMAKE_SOURCE_DIR})
  target_link_libraries(${ROOM_NAME}_screens PUBLIC Qt6::Widgets ${ROOM_NAME}_logic ${ROOM_LINKS} PRIVATE kalvo_warnings)
  kalvo_precompile(${ROOM_NAME}_screens platform_screens ${CMAKE_SOURCE_DIR}/cmake/pch_screens.h)
endfunction()

# kalvo_tests(NAME program SOURCES ... LINKS ... [SCREENS])
function(kalvo_tests)
  cmake_parse_arguments(T "SCREENS" "NAME" "SOURCES;LINKS;DEPENDS" ${ARGN})
  add_executable(${T_NAME} ${T_SOURCES})
  target_include_directories(${T_NAME} PRIVATE ${CMAKE_SOURCE_DIR})
  target_link_libraries(${T_NAME} PRIVATE ${T_LINKS} GTest::gtest GTest::gmock kalvo_warnings)
  target_compile_definitions(${T_NAME} PRIVATE KALVO_SOURCE_DIR="${CMAKE_SOURCE_DIR}" KALVO_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
  if(T_SCREENS)
    # Qt6::Test defines each test's own folder, so the precompiled headers of screen tests cannot be shared.
    target_precompile_headers(${T_NAME} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch_screens.h <gtest/gtest.h>)
  else()
    kalvo_precompile(${T_NAME} platform_tests ${CMAKE_SOURCE_DIR}/cmake/pch_logic.h <gtest/gtest.h>)
  endif()
  if(T_DEPENDS)
    add_dependencies(${T_NAME} ${T_DEPENDS})
  endif()
  # One process for each program keeps the run short; a failing case is named in its output.
  add_test(NAME ${T_NAME} COMMAND ${T_NAME})
  set_tests_properties(${T_NAME} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 600)
endfunction()
