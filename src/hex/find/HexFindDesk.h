#pragma once

class Prompts;
struct HexFindState;
struct Options;

/// What the find and replace form and its panels need of the program. All of it outlives them.
struct HexFindDesk {
    Prompts& prompts;
    const Options& options;
    HexFindState& state;
};
