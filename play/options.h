// What zelplay is asked for on its command line.
#pragma once

#include <string>

struct Options {
    std::string game;
    std::string play;    // a file, or "-"
    std::string record;  // the file to record to
    std::string output;  // folder for pictures
    bool window = false;
    double speed = 1;
    bool time = false;
    bool drawing = true;
    bool keep = false;
    int passMs = 16;
};

// Reads the command line. Says what is wrong and ends the process with status 2, or, asked for it,
// shows the help and ends with status 0.
Options readOptions(int count, char** words);

// Says what is wrong, in the form of the program's messages, and ends the process with status 2.
[[noreturn]] void refuse(const std::string& reason);
