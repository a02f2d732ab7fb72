#include "configuration_keys.h"

#include <iterator>
#include <unordered_map>

namespace orma {

namespace {

using Type = ConfigType;

constexpr ConfigKey kKeys[] = {
    {"onInitFailure", Type::Choice, "continue", 0, 0, "continue|stop",
     "what the host does when a service fails to start: go on without it, or stop"},
    {"installation.environment", Type::Path, "", 0, 0, "",
     "base directory of the installation; suffixes are appended directly"},
    {"installation.root", Type::Path, "", 0, 0, "", "root directory of the installation"},
    {"text.language", Type::Text, "en_US", 0, 0, "",
     "language of the texts, such as en_US or zh_CN"},
    {"text.characterSetSwitch", Type::Integer, "0", 0, 2, "",
     "northbound character set: 0 UTF-8, 1 GBK, 2 ISO-8859-1"},
    {"log.level", Type::Integer, "1", 0, 9, "",
     "highest level that is written: 0 errors, 1 information, 3 details"},
    {"log.format", Type::Choice, "text", 0, 0, "text|json", "lines of text or lines of JSON"},
    {"log.file", Type::Path, "", 0, 0, "", "log file; empty for none"},
    {"log.maxFileBytes", Type::Integer, "10485760", 4096, 1073741824, "",
     "size in bytes at which the log file is rotated"},
    {"log.maxFiles", Type::Integer, "5", 1, 100, "", "rotated log files that are kept"},
    {"log.stderr", Type::Boolean, "true", 0, 0, "", "whether the log goes to standard error"},
    {"log.syslog", Type::Boolean, "false", 0, 0, "", "whether the log goes to syslog"},
    {"rest.baseUrl", Type::Text, "", 0, 0, "",
     "address of the platform's REST services, such as http://127.0.0.1:8080"},
    {"rest.target", Type::Text, "nbi", 0, 0, "", "target that requests name"},
    {"rest.connectTimeoutMs", Type::Integer, "5000", 1, 600000, "",
     "milliseconds for making a connection"},
    {"rest.totalTimeoutMs", Type::Integer, "60000", 1, 3600000, "",
     "milliseconds for a whole exchange"},
    {"rest.maxAnswerBytes", Type::Integer, "268435456", 1024, 4294967296, "",
     "largest answer that is taken, in bytes"},
    {"rest.maxNesting", Type::Integer, "100", 1, 1000, "",
     "deepest nesting of an answer that is taken"},
    {"rest.maxConnections", Type::Integer, "16", 1, 1024, "",
     "idle connections that are kept for the next request"},
    {"rest.devicePageSize", Type::Integer, "1000", 1, 100000, "",
     "devices asked for in one page of the device listing"},
    {"rest.maxPages", Type::Integer, "1000000", 1, 1000000000, "",
     "most pages that one device listing takes"},
    {"rest.tls.verify", Type::Boolean, "true", 0, 0, "",
     "whether the server's certificate is verified"},
    {"rest.tls.caFile", Type::Path, "", 0, 0, "",
     "certificates of trusted authorities; empty for the system's"},
    {"rest.tls.certFile", Type::Path, "", 0, 0, "", "client certificate; empty for none"},
    {"rest.tls.keyFile", Type::Path, "", 0, 0, "", "key of the client certificate"},
    {"rest.token.file", Type::Path, "", 0, 0, "",
     "file that holds the access token; empty for none"},
    {"rest.token.environment", Type::Text, "", 0, 0, "",
     "name of the environment variable that holds the access token; empty for none"},
    {"faultServer.host", Type::Text, "", 0, 0, "",
     "address or name of the fault server's host; empty for none"},
    {"faultServer.port", Type::Integer, "0", 0, 65535, "",
     "TCP port of the fault server; 0 for none"},
    {"faultServer.process", Type::Integer, "56", 0, 4294967295, "",
     "process number by which the fault server is addressed"},
    {"faultServer.connectTimeoutMs", Type::Integer, "5000", 1, 600000, "",
     "milliseconds for making a connection"},
    {"faultServer.receiveTimeoutMs", Type::Integer, "0", 0, 3600000, "",
     "milliseconds for one frame; 0: what the command asks for"},
    {"faultServer.maxFrameBytes", Type::Integer, "67108864", 1024, 4294967295, "",
     "largest frame that is taken, in bytes"},
    {"faultServer.maxFrames", Type::Integer, "1000000", 1, 1000000000, "",
     "most frames that one command takes"},
    {"faultServer.tagging", Type::Choice, "implicit", 0, 0, "implicit|explicit",
     "how the context tags of the messages are written"},
    {"database.connection", Type::Text, "", 0, 0, "",
     "sqlite:PATH, relative to this file's directory, or postgresql:CONNINFO"},
    {"database.passwordFile", Type::Path, "", 0, 0, "",
     "libpq's password file for the database; empty for the user's own"},
    {"database.busyTimeoutMs", Type::Integer, "5000", 0, 600000, "",
     "milliseconds to wait for a locked database"},
    {"database.statementTimeoutMs", Type::Integer, "60000", 1, 3600000, "",
     "milliseconds for one statement"},
    {"serve.address", Type::Text, "127.0.0.1", 0, 0, "",
     "address at which serve offers health and metrics"},
    {"serve.port", Type::Integer, "-1", -1, 65535, "",
     "TCP port of health and metrics; 0 for a free one, -1 for none"},
    {"serve.allowRemote", Type::Boolean, "false", 0, 0, "",
     "whether serve.address may be one that other hosts reach"},
};

}  // namespace

// Both tables are never destroyed: settings are read by static destructors too.
const std::vector<ConfigKey>& configurationKeys() {
  static const auto* keys = new std::vector<ConfigKey>(std::begin(kKeys), std::end(kKeys));
  return *keys;
}

const ConfigKey* findConfigKey(std::string_view path) {
  static const auto* byPath = [] {
    auto* index = new std::unordered_map<std::string_view, const ConfigKey*>;
    for (const ConfigKey& key : kKeys) index->emplace(key.path, &key);
    return index;
  }();
  const auto found = byPath->find(path);
  return found == byPath->end() ? nullptr : found->second;
}

std::vector<std::string> choiceWords(const ConfigKey& key) {
  std::vector<std::string> words;
  std::string_view rest = key.choices;
  for (;;) {
    const auto bar = rest.find('|');
    words.emplace_back(rest.substr(0, bar));
    if (bar == std::string_view::npos) return words;
    rest.remove_prefix(bar + 1);
  }
}

}  // namespace orma
