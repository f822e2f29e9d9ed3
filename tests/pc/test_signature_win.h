// A program that somebody has signed whom this PC may be made to trust.
#pragma once

#include <QString>

namespace test_signature {

// Whether there is such a program, and a PC on which tests may change whom it trusts:
// only Wine's is theirs.
bool isAvailable();

// The talker, signed.
QString signedProgram();
// Who has.
QString signer();

// While it lives the signer is trusted.
class Trusted
{
public:
    Trusted();
    ~Trusted();
    Trusted(const Trusted &) = delete;
    Trusted &operator=(const Trusted &) = delete;

private:
    const void *certificate_ = nullptr;
};

} // namespace test_signature
