#pragma once
// One HTTP request of a SOAP client, read whole before the SOAP engine sees it: within a time
// for the whole request and one for each pause, up to a size bound, and with its XML checked
// for being well-formed, so that a bad request is answered with a fault at once and a slow one
// costs only its own connection.
#include <string>

class SoapRequest {
  public:
    enum class Outcome {
        kComplete,    // headers and the whole body (by its length or its last chunk)
        kMalformed,   // complete, but the body is not well-formed XML
        kNotSoap,     // complete and well-formed, but its root is no SOAP Envelope
        kTooLarge,    // larger than kMaxBytes: what came so far is kept
        kTimedOut,    // the client paused too long, or took too long in all
        kIncomplete,  // the client went away before the end
    };
    static constexpr size_t kMaxBytes = 2 << 20;

    // Reads from a connected socket; bytes: what arrived.
    static Outcome Read(int socket, int transferMs, int pauseMs, std::string& bytes);
    // What a whole body is: empty or an Envelope (kComplete), XML of another root (kNotSoap),
    // or no XML at all (kMalformed).
    static Outcome Judge(const std::string& body);
    // WS-Addressing of August 2004 declared as that of 2005, whose headers the engine knows.
    static void ReadAddressingOf2004As2005(std::string& bytes);
    // The answer to a request the engine must not see: HTTP 400 with a SOAP 1.2 Sender fault.
    static std::string BadRequestAnswer(const std::string& reason);
};
