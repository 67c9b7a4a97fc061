#pragma once

#include <string>

/// Sets the process's numeric locale to "C" while the object lives, so that the decimal separator
/// is a point. The destructor restores the previous locale.
class NumericLocale {
public:
    NumericLocale();
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;
    ~NumericLocale();

private:
    std::string saved_;
};
