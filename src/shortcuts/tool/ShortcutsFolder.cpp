#include "ShortcutsFolder.h"

#include "PathTrust.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string configHome()
{
    // Relative values are to be ignored, as the XDG base directory rules say.
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    if (xdg && xdg[0] == '/')
        return xdg;
    const char* home = std::getenv("HOME");
    if (!home || !home[0]) {
        const passwd* entry = getpwuid(getuid());
        home = entry ? entry->pw_dir : "/";
    }
    return std::string(home) + "/.config";
}

std::optional<std::string> realPath(const std::string& path)
{
    std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path.c_str(), nullptr),
                                                         &std::free);
    if (!resolved)
        return std::nullopt;
    return std::string(resolved.get());
}

ShortcutsFolder::Problem trustProblem(const std::string& path, bool rootMayOwn)
{
    using Problem = ShortcutsFolder::Problem;
    std::string reason;
    switch (checkTrust(path, rootMayOwn, reason)) {
    case Trust::Trusted:
        return {};
    case Trust::Untrusted:
        return {Problem::Untrusted, reason};
    case Trust::Unreadable:
        break;
    }
    return {Problem::Unreadable, reason};
}

bool isValidUtf8(const std::string& text)
{
    std::size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        int length = 0;
        unsigned int value = 0;
        if (lead < 0x80) {
            ++i;
            continue;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2;
            value = lead & 0x1F;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3;
            value = lead & 0x0F;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4;
            value = lead & 0x07;
        } else {
            return false;
        }
        if (i + length > text.size())
            return false;
        for (int k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80)
                return false;
            value = (value << 6) | (next & 0x3F);
        }
        // Overlong forms, surrogates and values past U+10FFFF are not UTF-8.
        static constexpr unsigned int smallest[] = {0, 0, 0x80, 0x800, 0x10000};
        if (value < smallest[length] || (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF)
            return false;
        i += length;
    }
    return true;
}

} // namespace

ShortcutsFolder::ShortcutsFolder() : m_path(configHome() + "/Obrinta/shortcuts") {}

bool ShortcutsFolder::isValidName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\n\r") == std::string::npos && isValidUtf8(name);
}

ShortcutsFolder::Problem ShortcutsFolder::check() const
{
    const std::optional<std::string> resolved = realPath(m_path);
    if (!resolved) {
        if (errno == ENOENT)
            return {Problem::Missing, m_path + " does not exist"};
        return {Problem::Unreadable, m_path + ": " + std::strerror(errno)};
    }
    struct stat info;
    if (stat(resolved->c_str(), &info) != 0 || !S_ISDIR(info.st_mode))
        return {Problem::Unreadable, m_path + " is not a folder"};
    return trustProblem(*resolved, false);
}

ShortcutsFolder::Problem ShortcutsFolder::checkFile(const std::string& name) const
{
    const std::string path = m_path + "/" + name;
    struct stat link;
    if (lstat(path.c_str(), &link) != 0)
        return {Problem::Missing, "it does not exist"};
    const std::optional<std::string> target = realPath(path);
    struct stat info;
    if (!target || stat(target->c_str(), &info) != 0)
        return {Problem::NotShortcut, "it points to nothing"};
    if (!S_ISREG(info.st_mode))
        return {Problem::NotShortcut, "it is not a file"};
    if (access(target->c_str(), X_OK) != 0)
        return {Problem::NotShortcut, "it is not executable"};
    // A link may point at a program that the system installed, such as one in /usr/bin.
    return trustProblem(*target, S_ISLNK(link.st_mode));
}

std::vector<ShortcutsFolder::Entry> ShortcutsFolder::list(std::vector<std::string>& warnings) const
{
    std::vector<Entry> entries;
    struct CloseFolder
    {
        void operator()(DIR* folder) const { closedir(folder); }
    };
    std::unique_ptr<DIR, CloseFolder> folder(opendir(m_path.c_str()));
    if (!folder)
        return entries;
    while (const dirent* item = readdir(folder.get())) {
        const std::string name = item->d_name;
        if (name == "." || name == "..")
            continue;
        if (!isValidName(name)) {
            warnings.push_back("skipping a file whose name is not one line of UTF-8 text");
            continue;
        }
        const Problem problem = checkFile(name);
        if (problem.kind == Problem::None)
            entries.push_back({name, m_path + "/" + name});
        else if (problem.kind == Problem::Untrusted)
            warnings.push_back("skipping '" + name + "': " + problem.reason);
    }
    std::sort(entries.begin(), entries.end(),
              [](const Entry& a, const Entry& b) { return a.name < b.name; });
    return entries;
}

ShortcutsFolder::Entry ShortcutsFolder::find(const std::string& name, Problem& problem) const
{
    if (!isValidName(name)) {
        problem = {Problem::Missing, "not a shortcut name: '" + name + "'"};
        return {};
    }
    problem = checkFile(name);
    switch (problem.kind) {
    case Problem::None:
        break;
    case Problem::Missing:
        problem.reason = "no shortcut named '" + name + "'";
        break;
    case Problem::NotShortcut:
        problem.reason = "no shortcut named '" + name + "' (" + problem.reason + ")";
        break;
    case Problem::Untrusted:
    case Problem::Unreadable:
        problem.reason = "refusing to run '" + name + "': " + problem.reason;
        break;
    }
    return {name, m_path + "/" + name};
}
