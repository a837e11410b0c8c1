#include "zoFuzzConfiguration.h"
#include "zoFuzzOutline.h"
#include "zoFuzzing.h"

// Configuration documents: a text that the window writes loads to itself, whatever text was loaded before.

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = zoFuzzOutline::documentOf(zoFuzzing::textOf(data, size));
    if (zoFuzzConfiguration::isSmall(text)) {
        zoFuzzConfiguration::check(text);
        zoFuzzConfiguration::checkFixes();
    }
    return 0;
}
