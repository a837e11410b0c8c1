#pragma once

// Why a node of a session is not running: the words by which programs tell each other. People read a text that
// the host makes of the word and its detail.
namespace zoNodeReason
{
constexpr char NoAnswer[] = "no-answer"; // within the time that a start may take
constexpr char Ended[] = "ended";        // its program ended; detail: what it or its launcher said last
constexpr char Silent[] = "silent";      // it stopped answering
constexpr char Version[] = "version";    // another protocol; detail: both versions
constexpr char HostName[] = "host-name"; // cannot be reached by such a name; detail: why
constexpr char InUse[] = "in-use";       // a server already runs on it
constexpr char Window[] = "window";      // detail: which window, and why
constexpr char Network[] = "network";    // its network cannot be reached; detail: why
} // namespace zoNodeReason
