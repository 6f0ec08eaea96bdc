// How every step of the script shader compile reports a failure: one text exception
// that carries what the compiler said, so that the script log shows the line at fault.
#pragma once

#include <string>

namespace Media::Compile {

// Throws System::NoteException "D3DCompile() failed" with the place
// "Media::ShaderCompile::compileFromMemory" and `compilerText` as its note.
[[noreturn]] void throwCompileFailure(const std::string& compilerText);

}  // namespace Media::Compile
