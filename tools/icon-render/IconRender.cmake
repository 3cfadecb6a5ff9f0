# render-icon: draws an SVG picture into the fixed PNG sizes of the icon
# theme at build time. Built with the program, never installed.
add_executable(render-icon ${CMAKE_CURRENT_LIST_DIR}/RenderIcon.cpp)
target_link_libraries(render-icon PRIVATE Qt6::Gui Qt6::Svg)
set_target_properties(render-icon PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tools
  AUTOMOC OFF)
