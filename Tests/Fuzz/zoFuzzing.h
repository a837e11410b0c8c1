#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <cstdint>

// What the fuzz targets share. Each target is a source of its own with LLVMFuzzerTestOneInput(); it is linked
// with libFuzzer by the preset "fuzz", and with zoFuzzReplay.cpp everywhere else.
namespace zoFuzzing
{
// Ends the program when the claim does not hold: what the fuzzer counts as a finding.
void require(bool holds, const char* claim, const QString& detail = QString());
// The same for two texts that must be equal; tells where they part.
void requireSame(const QString& actual, const QString& expected, const char* claim);

// UTF-8 up to the first NUL, as files are read.
QString textOf(const std::uint8_t* data, std::size_t size);

// An element of XML text. Characters that XML cannot hold are left out of the values.
QString attribute(const QString& name, const QString& value);
QString escaped(const QString& value);
} // namespace zoFuzzing

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
