# Media::ShaderCompile: script HLSL through glslang to SPIR-V, then SPIRV-Cross to GLSL.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/ShaderCompile.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/CompileFailure.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/ConstantBufferLoader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/GlslRewrite.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/HlslPacking.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/HlslToSpirv.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/ShaderIncluder.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/ShaderReflection.cpp
  ${CMAKE_CURRENT_LIST_DIR}/compile/SpirvCross.cpp
)

# glslang's CMake package also names glslangValidator, which Debian ships apart from
# glslang-dev, so the package cannot be loaded; its static libraries are linked by name,
# in dependency order.
set(SORVEL_GLSLANG_LIBRARIES)
foreach(library glslang-default-resource-limits SPIRV HLSL glslang MachineIndependent GenericCodeGen
                OGLCompiler OSDependent SPIRV-Tools-opt SPIRV-Tools)
  find_library(SORVEL_LIBRARY_${library} NAMES ${library} REQUIRED)
  list(APPEND SORVEL_GLSLANG_LIBRARIES ${SORVEL_LIBRARY_${library}})
endforeach()
find_package(PkgConfig REQUIRED)
pkg_check_modules(SPIRV_CROSS_C REQUIRED IMPORTED_TARGET spirv-cross-c-shared)

# The HLSL parts of glslang's headers are behind ENABLE_HLSL.
set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/compile/HlslToSpirv.cpp ${CMAKE_CURRENT_LIST_DIR}/compile/ShaderIncluder.cpp
                            PROPERTIES COMPILE_DEFINITIONS ENABLE_HLSL)
target_link_libraries(sorvel_media PRIVATE ${SORVEL_GLSLANG_LIBRARIES} PkgConfig::SPIRV_CROSS_C Threads::Threads)
