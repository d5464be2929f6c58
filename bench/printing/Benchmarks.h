#pragma once

class Printer;

// Loading the library; beginning and ending a job that writes nothing.
void measureStart(Printer& printer, int rounds);

// Asking a job for a setting, against asking the registry for the same value.
void measureGetters(Printer& printer, int rounds);

// A job of `megabytes`, against bare loops that write the same bytes into a file.
void measureWriting(Printer& printer, int rounds, unsigned megabytes);
