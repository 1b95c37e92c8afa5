// The per-user settings store: application "kelpwick", section "Startup".
#pragma once

#include <string>

std::string GetSetting(const std::string& key, const std::string& deflt);
void SaveSetting(const std::string& key, const std::string& value);
// Other sections of the same store ("Panels" keeps where each panel was put).
std::string GetSectionSetting(const std::string& section, const std::string& key, const std::string& deflt);
void SaveSectionSetting(const std::string& section, const std::string& key, const std::string& value);
// Boolean text as the classic runtime writes it.
std::string BoolText(bool v);
bool ParseBoolText(const std::string& s, bool deflt);
