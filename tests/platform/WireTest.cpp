#include "platform/Wire.h"

#include <gtest/gtest.h>

namespace zv::wire {
namespace {

const Values kEveryKind = {Value(),
                           MissingArgument{},
                           true,
                           std::int64_t{-7},
                           0.1,
                           std::string("Tür \"1\"\n"),
                           AutomationPoint{1.5, -2, 0},
                           ObjectNumber{12}};

TEST(Wire, EveryKindOfValueIsReadBackAsItWas)
{
    for (const Value& value : kEveryKind)
        EXPECT_EQ(toValue(toJson(value)), value) << writeJson(toJson(value));
}

TEST(Wire, NumbersStayWholeOrDouble)
{
    EXPECT_EQ(writeJson(toJson(Value(2.0))), "2.0");
    EXPECT_EQ(writeJson(toJson(Value(std::int64_t{2}))), "2");
}

TEST(Wire, WhatIsNoValueIsNone)
{
    for (const char* text :
         {"{}", "[1]", R"({"point":[1,2]})", R"({"point":[1,2,"3"]})", R"({"object":"a"})"})
        EXPECT_FALSE(toValue(*readJson(text))) << text;
}

TEST(Wire, RequestsAreTheLinesThatHostsKnow)
{
    Request get{1, Operation::Get, 0, "Version", {}, {}, {}};
    EXPECT_EQ(writeLine(get), R"({"id":1,"op":"get","object":0,"name":"Version"})");
    Request set{2, Operation::Set, 0, "Visible", true, {}, {}};
    EXPECT_EQ(writeLine(set), R"({"id":2,"op":"set","object":0,"name":"Visible","value":true})");
    Request call{3, Operation::Call, 7, "GetPoint", {}, {MissingArgument{}, std::string("Point: ")}, {}};
    EXPECT_EQ(writeLine(call),
              R"({"id":3,"op":"call","object":7,"name":"GetPoint","args":[{"missing":true},"Point: "]})");
    Request items{4, Operation::Items, 9, {}, {}, {}, {}};
    EXPECT_EQ(writeLine(items), R"({"id":4,"op":"items","object":9})");
    Request release{5, Operation::Release, 12, {}, {}, {}, {}};
    EXPECT_EQ(writeLine(release), R"({"id":5,"op":"release","object":12})");
    for (const Request& request : {get, set, call, items, release})
        EXPECT_EQ(readRequest(writeLine(request)), request) << writeLine(request);
}

TEST(Wire, ACallMayComeWithoutArguments)
{
    const auto request = readRequest(R"({"id":1,"op":"call","object":0,"name":"Quit"})");
    ASSERT_TRUE(request);
    EXPECT_EQ(request->fault, "");
    EXPECT_TRUE(request->arguments.empty());
}

TEST(Wire, WhatARequestLacksIsToldToTheClient)
{
    for (const char* line : {R"({"id":1,"op":"get","name":"Version"})", R"({"id":1,"op":"take","object":0})",
                             R"({"id":1,"op":"set","object":0,"name":"Visible"})",
                             R"({"id":1,"op":"set","object":0,"name":"Visible","value":{}})",
                             R"({"id":1,"op":"call","object":0,"name":"Quit","args":7})",
                             R"({"id":1,"op":"call","object":0,"name":"Quit","args":[{}]})"}) {
        const auto request = readRequest(line);
        ASSERT_TRUE(request) << line;
        EXPECT_EQ(request->id, 1);
        EXPECT_NE(request->fault, "") << line;
    }
}

TEST(Wire, ALineWithoutANumberIsNoRequest)
{
    for (const char* line : {"", "get", "[]", "{}", R"({"id":"1","op":"get","object":0})"})
        EXPECT_FALSE(readRequest(line)) << line;
}

TEST(Wire, AnswersAreTheLinesThatClientsKnow)
{
    const Answer value{3, Value(AutomationPoint{1.5, 2, 0})};
    EXPECT_EQ(writeLine(value), R"({"id":3,"result":{"point":[1.5,2.0,0.0]}})");
    const Answer nothing{2, Value()};
    EXPECT_EQ(writeLine(nothing), R"({"id":2,"result":null})");
    const Answer members{4, Values{ObjectNumber{12}, ObjectNumber{13}}};
    EXPECT_EQ(writeLine(members), R"({"id":4,"result":[{"object":12},{"object":13}]})");
    const Answer failure{6, Failure{FailureCode::UnknownName, "no member"}};
    EXPECT_EQ(writeLine(failure), R"({"id":6,"error":{"code":"unknown-name","description":"no member"}})");
    for (const Answer& answer : {value, nothing, members, failure})
        EXPECT_EQ(readAnswer(writeLine(answer)), answer) << writeLine(answer);
}

TEST(Wire, EveryFailureIsReadBackAsItWas)
{
    for (const auto code : {FailureCode::UnknownName, FailureCode::BadArgument, FailureCode::Cancelled,
                            FailureCode::Busy, FailureCode::Failed}) {
        const Answer answer{1, Failure{code, "why"}};
        EXPECT_EQ(readAnswer(writeLine(answer)), answer) << writeLine(answer);
    }
}

TEST(Wire, AFailureThatIsNotKnownHasFailedAndItsCodeIsItsText)
{
    const auto answer = readAnswer(R"({"id":1,"error":{"code":"tired"}})");
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->content, Content(Failure{FailureCode::Failed, "tired"}));
}

TEST(Wire, WhatIsNoAnswerIsNone)
{
    for (const char* line :
         {"", "nothing", "[]", R"({"result":1})", R"({"id":"1","result":1})", R"({"id":1})",
          R"({"id":1,"result":1,"error":{"code":"busy"}})", R"({"id":1,"result":{}})",
          R"({"id":1,"result":[{}]})", R"({"id":1,"error":{}})", R"({"id":1,"error":{"code":7}})"})
        EXPECT_FALSE(readAnswer(line)) << line;
}

TEST(Wire, TextThatIsUtf8GoesAsItIs)
{
    EXPECT_EQ(*sentText("T\xC3\xBCr"), "T\xC3\xBCr");
    EXPECT_EQ(receivedText("plain"), "plain");
}

} // namespace
} // namespace zv::wire
