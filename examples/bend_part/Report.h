#pragma once

#include "FlatPattern.h"

/// Prints the head of the part, the table of its bends and the blank, in millimetres and inches.
void PrintPart(Part const & part, FlatPattern const & pattern);

/// Compares two parts value by value. Gives how many were compared; throws std::runtime_error that names
/// those that differ.
int CompareParts(Part const & stored, Part const & loaded);

void Print(LCString const & line);
