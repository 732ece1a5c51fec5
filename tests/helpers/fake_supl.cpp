// A stand-in for the serial uploader helper, for the driver's tests. It appends its
// arguments to calls.txt and its process id to pids.txt in its working folder, then
// plays the section of script.txt that its arguments choose: [search] when they hold
// -b, [operation] otherwise. Script lines:
//   print TEXT     writes TEXT (\n, \r, \t and \0 escapes) to standard output at once
//   sleep MS       pauses
//   hang           waits until killed
//   exit N         ends with status N (the end of the section ends with 0)
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

std::string unescape(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char c = text[++i];
        out += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c == '0' ? '\0' : c;
    }
    return out;
}

} // namespace

int main(int argc, char** argv) {
    std::string section = "[operation]";
    {
        std::ofstream calls("calls.txt", std::ios::app);
        for (int i = 1; i < argc; ++i) {
            calls << (i > 1 ? "|" : "") << argv[i];
            if (std::string(argv[i]) == "-b") {
                section = "[search]";
            }
        }
        calls << "\n";
        std::ofstream("pids.txt", std::ios::app) << getpid() << "\n";
    }
    std::ifstream script("script.txt");
    std::string line;
    bool inSection = false;
    while (std::getline(script, line)) {
        if (!line.empty() && line[0] == '[') {
            inSection = line == section;
            continue;
        }
        if (!inSection) {
            continue;
        }
        const std::string word = line.substr(0, line.find(' '));
        const std::string rest = line.size() > word.size() ? line.substr(word.size() + 1) : "";
        if (word == "print") {
            const std::string text = unescape(rest);
            std::fwrite(text.data(), 1, text.size(), stdout);
            std::fflush(stdout);
        } else if (word == "sleep") {
            std::this_thread::sleep_for(std::chrono::milliseconds(std::atoi(rest.c_str())));
        } else if (word == "hang") {
            for (;;) {
                pause();
            }
        } else if (word == "exit") {
            return std::atoi(rest.c_str());
        }
    }
    return 0;
}
