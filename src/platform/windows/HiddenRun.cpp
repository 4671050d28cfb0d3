// Running a console program without its window, and waiting for it within a limit.
#include "platform/Command.h"

#include "platform/windows/Wide.h"

#include <windows.h>

namespace platform {

namespace {

// Quoted by the rules that the C runtime reads a command line with: backslashes count only before a quote.
std::wstring quoted(const std::wstring &word)
{
    if (!word.empty() && word.find_first_of(L" \t\"") == std::wstring::npos) {
        return word;
    }
    std::wstring result = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t letter : word) {
        if (letter == L'"') {
            result.append(backslashes + 1, L'\\'); // each doubled, and one for the quote
        }
        backslashes = letter == L'\\' ? backslashes + 1 : 0;
        result += letter;
    }
    result.append(backslashes, L'\\');
    return result + L'"';
}

std::wstring commandText(const CommandLine &command)
{
    std::wstring text = quoted(toWide(command.program));
    for (const std::string &argument : command.arguments) {
        text += L' ' + quoted(toWide(argument));
    }
    return text;
}

} // namespace

RunOutcome runHidden(const CommandLine &command, std::chrono::milliseconds limit)
{
    const auto file = findOnPath(command.program);
    if (!file) {
        return RunOutcome::NotStarted;
    }
    std::wstring text = commandText(command); // the call may write into it
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process{};
    // The file is named, so that the system does not look for the program in its own order of folders.
    if (CreateProcessW(file->c_str(),
                       text.data(),
                       nullptr,
                       nullptr,
                       FALSE,
                       CREATE_NO_WINDOW,
                       nullptr,
                       nullptr,
                       &startup,
                       &process)
        == 0) {
        return RunOutcome::NotStarted;
    }
    const DWORD waited = WaitForSingleObject(process.hProcess, static_cast<DWORD>(limit.count()));
    DWORD exitCode = 1;
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    if (waited == WAIT_TIMEOUT && exitCode == STILL_ACTIVE) {
        return RunOutcome::StillRunning;
    }
    return exitCode == 0 ? RunOutcome::Succeeded : RunOutcome::Failed;
}

} // namespace platform
