// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/path_names.h"

#include <algorithm>
#include <iterator>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_text.h"

namespace orvane {
namespace {

std::size_t NameStart(std::string_view path) {
  const std::size_t separator = path.find_last_of("/\\");
  return separator == std::string_view::npos ? 0 : separator + 1;
}

// Where the extension begins, its dot included; the end of the path where there is none.
std::size_t ExtensionStart(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string_view::npos || dot < NameStart(path) ? path.size() : dot;
}

std::string CasedPath(std::string_view path, char (*cased)(char)) {
  const std::size_t kept = path.find('/') == std::string_view::npos ? 0 : NameStart(path);
  std::string text(path.substr(0, kept));
  std::transform(path.begin() + static_cast<std::ptrdiff_t>(kept), path.end(),
                 std::back_inserter(text), cased);
  return text;
}

}  // namespace

std::string_view LastComponent(std::string_view path) { return path.substr(NameStart(path)); }

bool HasExtension(std::string_view path) { return ExtensionStart(path) < path.size(); }

std::string WithExtension(std::string_view path, std::string_view extension) {
  return std::string(path.substr(0, ExtensionStart(path))).append(extension);
}

std::string WithDefaultExtension(std::string_view path, std::string_view extension) {
  return std::string(path).append(HasExtension(path) ? std::string_view() : extension);
}

std::string LowerCasedPath(std::string_view path) { return CasedPath(path, LowerCased); }

std::string UpperCasedPath(std::string_view path) { return CasedPath(path, UpperCased); }

std::string ReplacedInName(std::string_view path, std::string_view from, std::string_view to) {
  std::string replaced(path);
  for (std::size_t at = replaced.find(from, NameStart(path)); at != std::string::npos;
       at = replaced.find(from, at + to.size())) {
    replaced.replace(at, from.size(), to);
  }
  return replaced;
}

std::filesystem::path InFolder(const std::filesystem::path& folder, const std::string& path) {
  return folder.empty() ? PathOf(path) : folder / PathOf(LastComponent(path));
}

std::string CopyName(std::string_view path, int number) {
  std::string name(path.substr(0, NameStart(path)));
  name += number == 0 ? "Copy" : "Copy (";
  if (number != 0) {
    name.append(FormatInt(number)).append(")");
  }
  return name.append(" of ").append(LastComponent(path));
}

std::string BackupName(std::string_view path, int number) {
  return std::string(path).append(".bak").append(number == 0 ? "" : FormatInt(number));
}

std::string FirstFreeName(std::string_view path, std::string (*name_of)(std::string_view, int),
                          const std::function<bool(const std::string&)>& exists) {
  int number = 0;
  std::string name = name_of(path, number);
  while (exists(name)) {
    name = name_of(path, ++number);
  }
  return name;
}

}  // namespace orvane
