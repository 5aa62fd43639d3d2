// Builds a KDX document: an action, an object with nested ones, and an action built on its own.
#include <kiv/CleanKDXParamString.h>
#include <kiv/KDXBuilder.h>

#include <iostream>

int main() {
    kiv::KDXBuilder builder;
    builder.addAction("Reset");

    builder.pushObject("Sample", "s1");
    builder.addParam("Volume", 2.5, "ml");
    builder.addParam("Repeats", 3);
    builder.addParam("Folder", kiv::CleanKDXParamString("C:\\data\\"));
    builder.pushObject("Channels");
    builder.addParam("Names", std::vector<std::string>{"A", "B"});
    builder.popObject();
    builder.pushReplacedObject("Method", "m2");
    builder.addParam("Mode", "fast");
    builder.popAll();

    kiv::ActionBuilder start("Start");
    start.addParam("sample", "s1");
    start.addParam("steps", "mix,measure");
    start.addParam("verify");
    builder.addAction(start);

    std::cout << builder.getKDX();
}
