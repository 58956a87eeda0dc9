// SPDX-License-Identifier: GPL-3.0-or-later
// The names of files that are made from other files. Pure rules on texts: no file is looked at.
// Both '/' and '\' end a folder, on every system: the boxes' files travel between computers.
#ifndef ORVANE_FILES_PATH_NAMES_H_
#define ORVANE_FILES_PATH_NAMES_H_

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace orvane {

/// What comes after the last separator.
std::string_view LastComponent(std::string_view path);

/// Whether the last component has a dot.
bool HasExtension(std::string_view path);

/// `path` cut at the last dot of its last component, if any, then `extension` (with its dot).
std::string WithExtension(std::string_view path, std::string_view extension);

/// `path`, with `extension` appended where its last component has no dot.
std::string WithDefaultExtension(std::string_view path, std::string_view extension);

/// `path` in lower case: whole where it has backslashes and no '/', else its last component only,
/// because folders of another case would be other folders. ASCII letters only.
std::string LowerCasedPath(std::string_view path);
/// The same in upper case.
std::string UpperCasedPath(std::string_view path);

/// `path` with each `from` in its last component replaced by `to`, in this very case.
std::string ReplacedInName(std::string_view path, std::string_view from, std::string_view to);

/// Where `path` goes when its file is put into `folder`; `path` itself where `folder` is empty.
std::filesystem::path InFolder(const std::filesystem::path& folder, const std::string& path);

/// The name of a copy in the same folder: "Copy of NAME", then "Copy (1) of NAME" ...
std::string CopyName(std::string_view path, int number);

/// The name under which a file is kept before it is written over: "FILE.bak", then "FILE.bak1" ...
std::string BackupName(std::string_view path, int number);

/// The first of the names `name_of(path, 0)`, `name_of(path, 1)` ... that does not exist. `exists`
/// must not be true for ever.
std::string FirstFreeName(std::string_view path, std::string (*name_of)(std::string_view, int),
                          const std::function<bool(const std::string&)>& exists);

}  // namespace orvane

#endif  // ORVANE_FILES_PATH_NAMES_H_
