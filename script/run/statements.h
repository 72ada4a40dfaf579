// The statements of the language, executed straight from the text.
//
// A loop is no loop in here: `while` and `do` move the position back to their word, and the block
// around them reads the statement again. What is skipped - the branch not taken, the body of a loop
// that ends - must be a braced block: skipping counts braces.
#pragma once

struct Place;

// Executes one statement, or one block in braces, at `position`: the body of a function.
//
// `return` ends only the interpretBlock that reads it. Directly in a function's body that ends the
// function; in a nested block the rest of that block still runs, as part of the block around it,
// whose end is then that "}"; in the body of a loop it goes on with the next pass.
void interpretBlock(Place* position);
