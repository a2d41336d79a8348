#pragma once

class QProcess;

namespace qvnd::office {

// The office suite's program starts others; these functions treat it and them as one.

// Makes what the process will start its own group. To be called before start().
void setOwnGroup(QProcess& process);
// Ends the process with everything that it started, at once and without a question.
void endGroup(QProcess& process);

} // namespace qvnd::office
