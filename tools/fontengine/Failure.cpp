#include "Failure.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <new>

#include <Common/Violations.h>
#include <oslayer/Errors.h>

namespace tool {

std::string describeFailure() {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return "there is not enough memory; work on a smaller part of the drawing, or allow more memory";
    } catch (const oslayer::EOsLayerError& error) {
        return "the text service refuses it (" + std::string(error.what()) +
               "); check its height and width, which must be moderate numbers";
    } catch (const common::EAssertionViolation& violation) {
        return "the program is at fault (" + std::string(violation.message.c_str()) + "); please report this drawing";
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "the program is at fault; please report this drawing";
    }
}

void complain(std::string message) {
    std::replace_if(
        message.begin(), message.end(), [](unsigned char c) { return c < ' ' || c == '\x7F'; }, '?');
    std::cerr << "fontengine: " << message << '\n';
}

} // namespace tool
