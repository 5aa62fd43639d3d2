// Provokes every error of the builders, and prints what each of them says.
#include <kiv/ActionBuilder.h>
#include <kiv/Error.h>
#include <kiv/KDXBuilder.h>

#include <iostream>

template <typename Call>
void report(Call call) {
    try {
        call();
    } catch (const kiv::internal::error& error) {
        std::cout << error.className() << "::" << error.functionName() << ": " << error.message()
                  << '\n';
    }
}

int main() {
    kiv::ActionBuilder action("start");
    report([&] { action.addParam("", "10"); });  // use addParam("10") for a value alone

    kiv::KDXBuilder builder;
    report([&] { builder.popObject(); });      // nothing is open: one popObject() too many
    report([&] { builder.addAction("  "); });  // an action needs a name
    builder.pushObject("Sample", "s1");
    report([&] { builder.addAction("start"); });  // actions come before, between or after objects
    report([&] { builder.getKDX(); });            // popObject() or popAll() first
    builder.popAll();
    std::cout << builder.getKDX();
}
