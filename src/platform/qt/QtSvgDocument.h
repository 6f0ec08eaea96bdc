// SVG figure files through Qt's SVG renderer, with the colour rewriting of monochrome
// files done on the document's XML. This header stays free of Qt.
#pragma once

#include <memory>
#include <string>

#include "media/figure/SvgDocument.h"

namespace Platform {

// Reads and parses the file. A file that cannot be read, that is no SVG document, or
// that holds text while no application object has loaded the fonts, throws
// System::NoteException with `place`. Any thread may open documents.
std::unique_ptr<Media::SvgDocument> openQtSvgDocument(const std::wstring& path, const char* place);
// The same test without an exception.
bool isQtSvgDocument(const std::wstring& path);

}  // namespace Platform
