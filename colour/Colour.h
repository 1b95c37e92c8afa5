// The colour folder's doors for the start-up sequence: its start-up steps.
#pragma once

class ComboBox;
class FileListBox;

// Start-up: the gradient store with its built-in ramps.
void StartupGradients();
// Start-up: the paper from the first stock picture and the check boxes.
void StartupPaper();
// Start-up: the default wells and gradients from the program folder, errors ignored.
void StartupDefaultFiles();

// Fills a combo box with the files of the program folder that a file list's pattern matches.
void ListProgramFiles(FileListBox& files, ComboBox& combo);
