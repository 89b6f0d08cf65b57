// The log, on standard output.
//
// A message has a severity: 1 fatal, 2 error, 3 warning, 4 information, 5 verbose, 6 debugging. It is written
// if that is not above the threshold of its layer (0 to 15) and source (0 to 255); a threshold of 0 lets
// nothing pass, and at first all are 3. Messages and thresholds of other layers and sources count for
// nothing.
#pragma once

void BelvokSetTraceLevel(int layer, int source, int severity);
void BelvokSetAllTraceLevel(int severity);

/// Names the agent that drives the devices; the name stands before each message. Null or empty: no name.
void setSandAgentName(char *);

/// Writes one line with all that it is given: the agent's name, severity, layer, source, unit (if
/// not negative), where it comes from, and the text, of which line ends at the end are left out. Null texts
/// count as empty.
void BelvokWriteBslLogMsg(const char *file, unsigned int line, const char *func, int severity, int layer,
                          int source, int unit, const char *msg);
