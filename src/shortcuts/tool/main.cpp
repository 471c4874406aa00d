// obrinta-shortcuts: lists and runs the user's shortcuts, the executable files in
// $XDG_CONFIG_HOME/Obrinta/shortcuts/. Obrinta calls it as "list" and as "run NAME".

#include "ShortcutsFolder.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <spawn.h>
#include <string>
#include <sys/wait.h>

extern char** environ;

namespace {

constexpr const char* usageText =
    "Usage: obrinta-shortcuts list\n"
    "       obrinta-shortcuts run NAME\n"
    "\n"
    "A shortcut is an executable file in $XDG_CONFIG_HOME/Obrinta/shortcuts/\n"
    "(by default ~/.config/Obrinta/shortcuts/); its name is the file name.\n"
    "\n"
    "  list      print the names of the shortcuts, one per line\n"
    "  run NAME  run the shortcut NAME and exit with its status\n"
    "            (128 + the signal's number when a signal ended it)\n"
    "\n"
    "Files and folders that other users can change are neither listed nor run.\n";

int usage(std::FILE* stream)
{
    std::fputs(usageText, stream);
    return 2;
}

int fail(const std::string& message)
{
    std::fprintf(stderr, "obrinta-shortcuts: %s\n", message.c_str());
    return 1;
}

// A folder that cannot be used for a reason other than being absent.
int refuseFolder(const ShortcutsFolder::Problem& problem)
{
    if (problem.kind == ShortcutsFolder::Problem::Untrusted)
        return fail("refusing to use the shortcuts folder: " + problem.reason);
    return fail("cannot read the shortcuts folder: " + problem.reason);
}

int list()
{
    const ShortcutsFolder folder;
    const ShortcutsFolder::Problem problem = folder.check();
    if (problem.kind == ShortcutsFolder::Problem::Missing)
        return 0;
    if (problem)
        return refuseFolder(problem);
    std::vector<std::string> warnings;
    for (const ShortcutsFolder::Entry& entry : folder.list(warnings))
        std::printf("%s\n", entry.name.c_str());
    for (const std::string& warning : warnings)
        std::fprintf(stderr, "obrinta-shortcuts: %s\n", warning.c_str());
    return 0;
}

int run(const std::string& name)
{
    const ShortcutsFolder folder;
    const ShortcutsFolder::Problem folderProblem = folder.check();
    if (folderProblem.kind == ShortcutsFolder::Problem::Missing)
        return fail("no shortcut named '" + name + "'");
    if (folderProblem)
        return refuseFolder(folderProblem);
    ShortcutsFolder::Problem problem;
    const ShortcutsFolder::Entry entry = folder.find(name, problem);
    if (problem)
        return fail(problem.reason);

    std::string program = entry.path;
    char* const arguments[] = {program.data(), nullptr};
    pid_t child = 0;
    const int error = posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ);
    if (error != 0) {
        std::fprintf(stderr, "obrinta-shortcuts: cannot run '%s': %s\n", name.c_str(),
                     std::strerror(error));
        return 126;
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return fail("lost track of '" + name + "': " + std::strerror(errno));
    }
    if (WIFSIGNALED(status))
        return 128 + WTERMSIG(status);
    return WEXITSTATUS(status);
}

} // namespace

int main(int argc, char* argv[])
{
    const std::string command = argc > 1 ? argv[1] : "";
    if (command == "list" && argc == 2)
        return list();
    if (command == "run" && argc == 3)
        return run(argv[2]);
    if (command == "--help" || command == "-h")
        return usage(stdout);
    return usage(stderr);
}
