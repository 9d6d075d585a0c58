#pragma once

class Prompts;
struct HexFindState;
struct Options;

/// The parts of the program that the find and replace form and its panels use. All of them outlive it.
struct HexFindDesk {
    Prompts& prompts;
    const Options& options;
    HexFindState& state;
};
