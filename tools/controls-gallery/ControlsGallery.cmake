# The controls gallery: every control of the control library in one window,
# to look at by eye. Built with the program, never installed.
if("controls" IN_LIST VISTREL_SUBSYSTEMS AND "shell" IN_LIST VISTREL_SUBSYSTEMS)
  add_executable(controls-gallery ${CMAKE_CURRENT_LIST_DIR}/ControlsGallery.cpp)
  target_link_libraries(controls-gallery PRIVATE VistrelCore)
  set_target_properties(controls-gallery PROPERTIES
                        RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tools)
endif()
