#pragma once
// Where the program's bytes meet Qt's Unicode strings.
//
// Text: every string of the engines is bytes in the code page (Windows-1252,
// base/CodePage.h). toQString/fromQString convert for display and the
// clipboard; all 256 bytes survive the round trip, and characters the code
// page lacks become "?" on the way back.
//
// File names (the decision): a file name is held as the bytes the operating
// system takes, everywhere, engines included: on Linux these are normally
// UTF-8. They go to the OS unchanged, so every file can be opened, whatever
// its name. Qt's view of such a name (dialogs, Qt file classes) is
// pathToQString/qStringToPath (the local 8-bit encoding, UTF-8). To show a
// file name inside the program's own text (a caption, "Save changes to ...",
// the recent files), convert it with displayFileName, which gives code-page
// bytes; characters the code page lacks show as "?". A display name is never
// used to open a file.

#include <string>
#include <string_view>

#include <QString>

namespace zorfa::platform {

QString toQString(std::string_view bytes);
std::string fromQString(const QString& text, char replacement = '?');

QString pathToQString(std::string_view path);
std::string qStringToPath(const QString& path);

// The file name as code-page text for display. Pure ASCII names are unchanged.
std::string displayFileName(std::string_view path);
// The other way: a file name typed or stored as code-page text (a user tool's
// command line, a preference) as the OS's bytes.
std::string pathFromDisplay(std::string_view codePageText);

}  // namespace zorfa::platform
