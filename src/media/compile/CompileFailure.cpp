#include "media/compile/CompileFailure.h"

#include "system/Exception.h"

namespace Media::Compile {

void throwCompileFailure(const std::string& compilerText) {
  throw System::NoteException("Media::ShaderCompile::compileFromMemory", "D3DCompile() failed", compilerText);
}

}  // namespace Media::Compile
