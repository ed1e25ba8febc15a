#pragma once
#include <string>

// Settings that must never reach a console or a log: a parameter whose name says password,
// secret or key (as a word: "API key", "key_file", not "Keyframe"), or whose type is
// PASSWORD. MaskSecrets gives the text with each such parameter's value as "****"; everything
// else is left as it is, so a printed project still tells what it holds.
bool IsSecretSetting(const std::string& name);
std::string MaskSecrets(const std::string& settingsText);
