# The tutorial's character: its art goes into the program folder as
# tutorial/Merlin.character, where the main window looks for it.

set(VISTREL_CHARACTER_SOURCE ${CMAKE_SOURCE_DIR}/resources/tutorial/Merlin.character)
set(VISTREL_CHARACTER_TARGET ${VISTREL_PROGRAM_DIR}/tutorial/Merlin.character)

add_custom_command(
  OUTPUT ${VISTREL_CHARACTER_TARGET}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${VISTREL_PROGRAM_DIR}/tutorial
  COMMAND ${CMAKE_COMMAND} -E copy_if_different ${VISTREL_CHARACTER_SOURCE} ${VISTREL_CHARACTER_TARGET}
  DEPENDS ${VISTREL_CHARACTER_SOURCE}
  COMMENT "Copying the tutorial's character"
  VERBATIM)
add_custom_target(VistrelTutorialCharacter ALL DEPENDS ${VISTREL_CHARACTER_TARGET})
list(APPEND VISTREL_PROGRAM_PARTS VistrelTutorialCharacter)
