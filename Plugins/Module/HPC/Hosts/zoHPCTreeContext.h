#pragma once

#include <QPalette>

// What the rows of one host tree share: the colours that they are written in, and who hears of their changes.
class zoHPCTreeContext
{
public:
    virtual ~zoHPCTreeContext() = default;

    virtual QPalette palette() const = 0;
    // An option or a name of a row changed.
    virtual void noteChange() = 0;
};
