#include "rest_faults.h"

#include <json/reader.h>
#include <json/writer.h>

#include <memory>

#include "http_answers.h"

namespace emf::faults {
namespace {

using How = RestFault::How;
using Script = std::function<void(const Wire&)>;
using Texts = std::vector<std::string>;

constexpr int kPauseMs = 10;  // far below the deadline; a whole answer takes many of them
constexpr std::size_t kPlaces = 5;

Json::Value parsed(const std::string& text) {
  Json::Value value;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  reader->parse(text.data(), text.data() + text.size(), &value, nullptr);
  return value;
}

std::string compact(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  return Json::writeString(builder, value);
}

// The same script whatever the operation is.
RestFault::Scripts just(Script script) {
  return [script = std::move(script)](const RestOperation&, const Exchange&) {
    return std::vector<Script>{script};
  };
}

// Says something that depends on the right answer's body, in several versions, and closes.
RestFault::Scripts says(std::function<Texts(const std::string& body)> versions) {
  return [versions = std::move(versions)](const RestOperation&, const Exchange& exchange) {
    std::vector<Script> scripts;
    for (const std::string& bytes : versions(exchange.answer)) {
      scripts.push_back([bytes](const Wire& wire) { wire.send(bytes); });
    }
    return scripts;
  };
}

using Phase = std::vector<std::size_t> (*)(const AnswerPlaces&);

std::vector<std::size_t> nothing(const AnswerPlaces&) { return {0}; }
std::vector<std::size_t> inStatusLine(const AnswerPlaces& places) {
  return placesBetween(1, places.statusEnd, kPlaces);
}
std::vector<std::size_t> inHeaders(const AnswerPlaces& places) {
  return placesBetween(places.statusEnd, places.headersEnd, kPlaces);
}
std::vector<std::size_t> inBody(const AnswerPlaces& places) {
  return placesBetween(places.headersEnd, places.end, kPlaces);
}

// An answer that lacks but the end of its last line is whole.
std::vector<std::size_t> inChunks(const AnswerPlaces& places) {
  return placesBetween(places.headersEnd, places.end - 1, 2 * kPlaces);
}

// Ends the connection in that phase of the answer, by a close and by a reset.
RestFault::Scripts cut(Phase phase, std::string (*answerOf)(const std::string&)) {
  return [=](const RestOperation&, const Exchange& exchange) {
    const std::string answer = answerOf(exchange.answer);
    std::vector<Script> scripts;
    for (const std::size_t place : phase(AnswerPlaces(answer))) {
      const std::string bytes = answer.substr(0, place);
      for (const bool byReset : {false, true}) {
        scripts.push_back([=](const Wire& wire) {
          wire.send(bytes);
          if (byReset) wire.reset();
        });
      }
    }
    return scripts;
  };
}

// Says nothing more from the middle of that phase on.
RestFault::Scripts stall(Phase phase) {
  return [phase](const RestOperation&, const Exchange& exchange) {
    const std::string answer = httpAnswer(exchange.answer);
    const auto places = phase(AnswerPlaces(answer));
    const std::string bytes = answer.substr(0, places[places.size() / 2]);
    return std::vector<Script>{[bytes](const Wire& wire) {
      wire.send(bytes);
      wire.stall();
    }};
  };
}

RestFault::Scripts dribble(int pauseMs) {
  return [pauseMs](const RestOperation&, const Exchange& exchange) {
    const std::string bytes = httpAnswer(exchange.answer);
    return std::vector<Script>{[=](const Wire& wire) { wire.dribble(bytes, pauseMs); }};
  };
}

std::string plain(const std::string& body) { return httpAnswer(body); }

std::string untilClose(const std::string& body) { return "HTTP/1.1 200 OK\r\n\r\n" + body; }

// --- What is no answer

Texts noHttp(const std::string& body) {
  return {"garbage",
          "\r\n\r\n\r\n",
          body,
          std::string(600, '\0'),
          "SSH-2.0-OpenSSH_9.2p1 Debian-2\r\n",
          "HTTP/9.9 200 OK\r\n\r\n" + body,
          "HTTP/1.1 twohundred OK\r\n\r\n" + body,
          std::string("\x15\x03\x03\x00\x02\x02\x28", 7)};
}

Texts badHeaders(const std::string& body) {
  const std::string ok = "HTTP/1.1 200 OK\r\n";
  const std::string chunked = ok + "Transfer-Encoding: chunked\r\n\r\n";
  return {ok + "Content-Length: -5\r\n\r\n" + body,
          ok + "Content-Length: 5\r\n\r\n" + body,
          ok + "Content-Length: 99999999999999999999999\r\n\r\n" + body,
          ok + "Content-Encoding: gzip\r\n\r\n" + body,
          ok + "Transfer-Encoding: unknown\r\n\r\n" + body,
          chunked + "zz\r\n" + body,
          chunked + "-1\r\n" + body,
          chunked + "FFFFFFFFFFFFFFFFFF\r\n" + body};
}

Texts badBodies(const std::string& body) {
  Texts answers;
  const Texts bodies = {"",
                        "<html><body>Service unavailable</body></html>",
                        std::string("\x1f\x8b\x08\x00\x00\x00\x00\x00", 8),
                        std::string(100, '\0'),
                        std::string(100, '\xff'),
                        body + body,
                        body + "x",
                        body.substr(1),
                        "[" + body,
                        "{\"objList\":[01]}",
                        "{\"objList\":[\"\n\"]}",
                        "{'objList':[]}",
                        "NaN",
                        "\"" + std::string(100, '\\')};
  for (const std::string& text : bodies) answers.push_back(httpAnswer(text));
  return answers;
}

Texts otherStatuses(const std::string& body) {
  Texts answers;
  for (const char* status :
       {"204 No Content", "301 Moved Permanently", "302 Found", "304 Not Modified",
        "400 Bad Request", "401 Unauthorized", "403 Forbidden", "404 Not Found",
        "429 Too Many Requests", "500 Internal Server Error", "503 Service Unavailable",
        "999 Beyond"}) {
    answers.push_back(httpAnswer(body, status));
  }
  return answers;
}

// --- JSON of another shape

std::vector<Script> sayingEach(const Texts& bodies) {
  std::vector<Script> scripts;
  for (const std::string& body : bodies) {
    scripts.push_back([body](const Wire& wire) { wire.send(httpAnswer(body)); });
  }
  return scripts;
}

RestFault::Scripts answersWith(const Texts& bodies) {
  return [bodies](const RestOperation&, const Exchange&) { return sayingEach(bodies); };
}

std::vector<Script> listOfWrongType(const RestOperation& operation, const Exchange& exchange) {
  Texts bodies;
  Json::Value answer = parsed(exchange.answer);
  for (const char* list : {"null", "true", "7", "-1.5", "\"text\"", "\"\"", "{}"}) {
    answer[operation.list] = parsed(list);
    bodies.push_back(compact(answer));
  }
  answer.removeMember(operation.list);
  bodies.push_back(compact(answer));
  return sayingEach(bodies);
}

// --- Beyond the limits

Texts tooLarge(const std::string& body) {
  const std::string padded = body + std::string(kMaxAnswerBytes, ' ');
  return {httpAnswer(padded), chunkedAnswer(padded), untilClose(padded)};
}

Texts tooDeep(const std::string& body) {
  const std::string open(kMaxNesting + 1, '[');
  const std::string close(kMaxNesting + 1, ']');
  return {httpAnswer(open + close),
          httpAnswer("{\"extra\":" + open + close + "," + body.substr(1))};
}

Texts endlessHeaders(const std::string& body) {
  std::string answer = "HTTP/1.1 200 OK\r\n";
  for (int i = 0; i < 300; ++i) answer += "X-Padding: " + std::string(1000, 'x') + "\r\n";
  return {answer + "\r\n" + body};
}

// --- What only looks bad

Texts unusualButRight(const std::string& body) {
  const std::string answer = httpAnswer(body);
  return {"HTTP/1.1 100 Continue\r\n\r\n" + answer,
          "HTTP/1.1 102 Processing\r\n\r\nHTTP/1.1 102 Processing\r\n\r\n" + answer,
          chunkedAnswer(body),
          untilClose(body),
          httpAnswer("\xef\xbb\xbf" + body),
          httpAnswer(" \r\n\t" + body + "\n\n"),
          httpAnswer(body, "201 Created"),
          answer + "bytes behind the answer"};
}

}  // namespace

void PrintTo(const RestFault& fault, std::ostream* out) { *out << fault.name; }

const std::vector<RestFault>& restFaults() {
  static const std::vector<RestFault> faults = {
      {"refused", Loss::Failed, How::Refuses, just({})},
      {"stalledInTheConnecting", Loss::Failed, How::IsDeaf, just({}), true},
      {"stalledBeforeTheStatusLine", Loss::Failed, How::Answers, stall(nothing), true},
      {"stalledInTheHeaders", Loss::Failed, How::Answers, stall(inHeaders), true},
      {"stalledInTheBody", Loss::Failed, How::Answers, stall(inBody), true},
      {"cutBeforeTheStatusLine", Loss::Failed, How::Answers, cut(nothing, plain)},
      {"cutInTheStatusLine", Loss::Failed, How::Answers, cut(inStatusLine, plain)},
      {"cutInTheHeaders", Loss::Failed, How::Answers, cut(inHeaders, plain)},
      {"cutInTheBody", Loss::Failed, How::Answers, cut(inBody, plain)},
      {"cutInTheChunks", Loss::Failed, How::Answers, cut(inChunks, chunkedAnswer)},
      {"cutInABodyWithoutLength", Loss::Failed, How::Answers, cut(inBody, untilClose)},
      {"slowWithinTheDeadline", Loss::None, How::Answers, dribble(0)},
      {"slowBeyondTheDeadline", Loss::Failed, How::Answers, dribble(kPauseMs), true},
      {"garbageForHttp", Loss::Failed, How::Answers, says(noHttp)},
      {"garbageInTheHeaders", Loss::Failed, How::Answers, says(badHeaders)},
      {"garbageInTheBody", Loss::Failed, How::Answers, says(badBodies)},
      {"otherStatus", Loss::Failed, How::Answers, says(otherStatuses)},
      {"wrongTypeNoObject", Loss::NoObject, How::Answers,
       answersWith({"[]", "[{}]", "true", "7", "-1.5", "\"text\"", "\"\""})},
      {"wrongTypeNull", Loss::Null, How::Answers, answersWith({"null"})},
      {"wrongTypeOfTheList", Loss::NoList, How::Answers, listOfWrongType},
      {"tooLarge", Loss::Failed, How::Answers, says(tooLarge)},
      {"tooLargeHeaders", Loss::Failed, How::Answers, says(endlessHeaders)},
      {"tooDeep", Loss::Failed, How::Answers, says(tooDeep)},
      {"unusualButRight", Loss::None, How::Answers, says(unusualButRight)},
  };
  return faults;
}

}  // namespace emf::faults
