// What the conversion program said when it failed, put in the user's words: a
// resource or security-policy limit is named with its value, anything else is
// passed on as the program's own first lines.
#pragma once

#include <string>

// The arguments that make ImageMagick list every exception on its error
// channel, also the warnings of readers that end in a plain "no images defined".
extern const char* const ConversionDebugArguments[2];

// The value of one limit ("Width", "Disk"...) in the text of
// "convert -list resource"; empty when the text does not name it.
std::string ResourceLimit(const std::string& limits, const std::string& name);

// The names of the limits an error text complains about ("Width", "Height",
// "Area", "Memory", "Map", "Disk", "Time"), or "Policy" for a security policy
// that forbids the work; empty when it names none.
std::string LimitsNamed(const std::string& errorText);

// The reason for the user: `limits` is the text of "convert -list resource" (or
// empty when unknown). Empty when the program said nothing useful.
std::string ConversionFailureReason(const std::string& errorText, const std::string& limits);
