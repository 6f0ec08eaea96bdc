# The graphics device, its buffers, shaders, pipeline state tables and vertex lists. The
# GPU calls themselves live in the platform library sorvel_egl_gl.
target_sources(sorvel_media PRIVATE
  ${CMAKE_CURRENT_LIST_DIR}/BufferGeometry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ComputeShader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ConstantBufferCommon.cpp
  ${CMAKE_CURRENT_LIST_DIR}/CpuAccessBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DrawPath.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Format.cpp
  ${CMAKE_CURRENT_LIST_DIR}/FrameDrawResources.cpp
  ${CMAKE_CURRENT_LIST_DIR}/GraphicsDevice.cpp
  ${CMAKE_CURRENT_LIST_DIR}/InputLayout.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PassTarget.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PixelShader.cpp
  ${CMAKE_CURRENT_LIST_DIR}/RenderBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ResourceBuffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/ShaderVariants.cpp
  ${CMAKE_CURRENT_LIST_DIR}/VertexShader.cpp
)
