// Stands in for the system's disk check where no shell runs a script: does the commands that it
// finds in the file "script", each behind a semicolon or on a line of its own: exit N, sleep
// SECONDS, echo 'TEXT', printf 'FORMAT', ask 'FORMAT', await FILE, echo $$ > pid. A format has
// octal escapes and %% only.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <process.h>
#define getpid _getpid
#else
#include <unistd.h>
#endif

namespace {

std::string quoted(const std::string &command)
{
    const std::size_t first = command.find_first_of("'\"");
    if (first == std::string::npos)
        return command.substr(command.find(' ') + 1);
    return command.substr(first + 1, command.rfind(command.at(first)) - first - 1);
}

std::string formatted(const std::string &format)
{
    constexpr std::size_t octalDigits = 3;
    std::string text;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] == '\\') {
            text += static_cast<char>(std::stoi(format.substr(i + 1, octalDigits), nullptr, 8));
            i += octalDigits;
        } else {
            text += format[i];
            i += format.compare(i, 2, "%%") == 0 ? 1 : 0;
        }
    }
    return text;
}

void say(const std::string &text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

void ask(const std::string &question)
{
    say(question);
    std::string answer;
    std::getline(std::cin, answer);
    std::ofstream("answers", std::ios::app | std::ios::binary) << answer << '\n';
}

void await(const std::string &file)
{
    while (!std::ifstream(file))
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

/** Whether the command is this word and what follows it. */
bool is(const std::string &command, const std::string &word)
{
    return command.compare(0, word.size(), word) == 0;
}

void perform(std::string command)
{
    if (is(command, "exec "))
        command.erase(0, command.find(' ') + 1);
    if (command == "echo $$ > pid")
        std::ofstream("pid") << getpid();
    else if (is(command, "exit "))
        std::_Exit(std::stoi(command.substr(command.find(' '))));
    else if (is(command, "sleep "))
        std::this_thread::sleep_for(
            std::chrono::duration<double>(std::stod(command.substr(command.find(' ')))));
    else if (is(command, "echo "))
        say(quoted(command) + '\n');
    else if (is(command, "printf "))
        say(formatted(quoted(command)));
    else if (is(command, "ask "))
        ask(formatted(quoted(command)));
    else if (is(command, "await "))
        await(quoted(command));
    else if (!command.empty())
        std::_Exit(99);
}

} // namespace

int main(int argc, char *argv[])
{
#ifdef _WIN32
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
#endif
    {
        std::ofstream arguments("arguments", std::ios::binary);
        for (int i = 1; i < argc; ++i)
            arguments << argv[i] << '\n';
    }
    std::ifstream script("script");
    std::string line;
    while (std::getline(script, line)) {
        std::istringstream commands(line);
        std::string command;
        while (std::getline(commands, command, ';')) {
            command.erase(0, command.find_first_not_of(' '));
            perform(command);
        }
    }
    return 0;
}
