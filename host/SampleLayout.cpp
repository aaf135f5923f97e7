#include "host/SampleLayout.h"

SampleLayout FindSampleLayout(std::uint8_t nMode, SecondInput secondInput) {
    switch (nMode) {
    case 1:
    case 10:
        return {1, 2};
    case 2:
        return {2, secondInput == SecondInput::Analogue ? 2u : 1u};
    case 3:
        return {3, 1};
    case 12:
    case 22:
        return {2, 1};
    case 20:
        return {2, 2};
    default:
        return {1, 1};
    }
}
