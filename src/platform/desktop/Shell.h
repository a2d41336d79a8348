#pragma once

#include <QString>

namespace qvnd::desktop {

// Starts other programs. Neither call waits for the program that it starts.
class Shell {
public:
    virtual ~Shell() = default;

    // Starts a program in a normal window; RunTimeError 53 when there is none of that path.
    virtual void run(const QString& program) = 0;
    // Opens a file with the desktop's own handler for its kind (verb 2 of a document);
    // RunTimeError 53 when the file is missing, 31031 when no handler takes it.
    virtual void open(const QString& file) = 0;
    // Opens a new, unnamed document based on the file in the desktop's word processor; saving it
    // asks for a name and leaves the file as it is. Errors as open().
    virtual void openAsTemplate(const QString& file) = 0;
};

} // namespace qvnd::desktop
