#pragma once

#include <string>

/// Holds the process's numeric locale at "C" while it lives, so that a decimal point is always a
/// point, and then gives back what was there before.
class NumericLocale {
public:
    NumericLocale();
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;
    ~NumericLocale();

private:
    std::string saved_;
};
