// One SPIRV-Cross compiler of a SPIR-V module for GLSL 4.50 core, owned for the length
// of one script shader's compile. Every call that can fail goes through check(), so a
// failure of the translator reaches the caller as a compile failure with its message.
#pragma once

#include <spirv_cross_c.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Media::Compile {

class SpirvCross {
 public:
  explicit SpirvCross(const std::vector<std::uint32_t>& spirv);
  SpirvCross(const SpirvCross&) = delete;
  SpirvCross& operator=(const SpirvCross&) = delete;

  spvc_compiler compiler() const noexcept { return compiler_; }

  // Throws the compile failure with the translator's last message unless `result` is
  // SPVC_SUCCESS.
  void check(spvc_result result) const;

  // The module's resources of one kind, as they stood when the compiler was made.
  std::vector<spvc_reflected_resource> resources(spvc_resource_type type) const;
  std::vector<spvc_reflected_builtin_resource> builtinInputs() const;

  // The binding decoration of a variable, or `fallback` if it has none.
  std::uint32_t binding(spvc_variable_id id, std::uint32_t fallback = 0) const;

  // Writes the GLSL 4.50 core text of the module as it stands now.
  std::string compileGlsl();

 private:
  std::unique_ptr<spvc_context_s, decltype(&spvc_context_destroy)> context_{nullptr, &spvc_context_destroy};
  spvc_compiler compiler_ = nullptr;
  spvc_resources resources_ = nullptr;
};

}  // namespace Media::Compile
