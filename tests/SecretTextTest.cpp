// Secrets in plug-in settings never reach the console: what is masked and what is left alone.
#include <gtest/gtest.h>

#include "core/SecretText.h"

namespace {

std::string Parameter(const std::string& name, const std::string& type, const std::string& value) {
    return "\n<PARAMETER>\n<NAME>" + name + "<\\NAME><TYPE>" + type + "<\\TYPE><VALUE>" + value +
           "<\\VALUE>\n<\\PARAMETER>";
}

}  // namespace

TEST(SecretText, PasswordsKeysAndSecretsAreMaskedByNameOrType) {
    const std::string settings =
        Parameter("URL", "STRING", "rtsp://cam/1") + Parameter("User", "STRING", "operator") +
        Parameter("Password", "STRING", "s3cret") + Parameter("API key", "STRING", "abc123") +
        Parameter("client_secret", "STRING", "xyz") + Parameter("Pin", "PASSWORD", "4321") +
        Parameter("Keyframe interval", "INT", "25") + Parameter("Monkey", "STRING", "george");
    const std::string masked = MaskSecrets("<CAMSETTINGS>" + settings + "<\\CAMSETTINGS>\n");
    EXPECT_EQ(
        masked,
        "<CAMSETTINGS>" + Parameter("URL", "STRING", "rtsp://cam/1") +
            Parameter("User", "STRING", "operator") + Parameter("Password", "STRING", "****") +
            Parameter("API key", "STRING", "****") + Parameter("client_secret", "STRING", "****") +
            Parameter("Pin", "PASSWORD", "****") + Parameter("Keyframe interval", "INT", "25") +
            Parameter("Monkey", "STRING", "george") + "<\\CAMSETTINGS>\n");
}

TEST(SecretText, CutAndOddTextIsLeftAsItIsOrMaskedWhereWhole) {
    EXPECT_EQ(MaskSecrets(""), "");
    EXPECT_EQ(MaskSecrets("<PARAMETER><NAME>Password"), "<PARAMETER><NAME>Password");
    EXPECT_EQ(MaskSecrets("<PARAMETER><NAME>Password<\\NAME><VALUE>s3"),
              "<PARAMETER><NAME>Password<\\NAME><VALUE>s3");
    // An empty password stays empty: nothing is said that was not there.
    EXPECT_EQ(MaskSecrets(Parameter("Password", "STRING", "")),
              Parameter("Password", "STRING", ""));
    // A value of the next block is never taken for this one's.
    EXPECT_EQ(MaskSecrets("<PARAMETER><NAME>Password<\\NAME><\\PARAMETER>" +
                          Parameter("Port", "INT", "554")),
              "<PARAMETER><NAME>Password<\\NAME><\\PARAMETER>" + Parameter("Port", "INT", "554"));
}
