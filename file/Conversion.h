// Every format other than Targa goes through ImageMagick's `convert`, with a
// temporary Targa file on the near side. The temporaries live in a private
// folder held for the run.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

// The program started for conversions, found through the search path.
extern std::string ConversionProgram;

// The status window's caption back to "Processing...", the window hidden.
void StatusProcessing();

// A file of the private temporary folder ("TempTga.tga", "TempTGA.tga").
std::string TempFile(const std::string& name);

// Converts any picture into a Targa file; 0 when the target appeared, 255 otherwise
// (after telling the user why).
uint8_t ConvertToTarga(const std::string& source, const std::string& target);

// Starts the conversion of a Targa file into `format` ("BMP", "JPEG", "PSD", "PNG",
// "TGA", "TIF") and returns at once; a conversion that ends in failure is
// reported when it ends, one that ends well runs `written`.
void ConvertFromTarga(const std::string& target, const std::string& source, const std::string& format,
                      std::function<void()> written = {});

// Waits for the conversions still running and reports those that failed.
void FinishPendingConversions();
int PendingConversionCount();
