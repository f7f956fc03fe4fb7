// SPDX-License-Identifier: GPL-2.0-or-later
#include "optiontable.h"

const char* const programSummary = "Imports media files, folders, disc images, DVD and Blu-ray "
                                   "folders and DVD IFO files: describes "
                                   "what is in them and takes pictures of it.";

const OptionText optionTable[] = {
    {"for", nullptr, "import|play|convert", Completion::Words,
     "What the sources are for. May be repeated. Default: import.",
     "For import and convert pictures are taken, for play they are not. For convert every file is "
     "tried, whatever its suffix, and no failure is counted as an error."},
    {"config-dir", nullptr, "DIR", Completion::Folder,
     "Where the pictures go. Default: vspimport/snapshots in your cache.",
     "Beside the pictures the hidden folder .index says of which source each is. A source whose "
     "picture would have the name of another's gets a folder of its own below, called by a hash of "
     "its path. The folder is a cache: what is deleted in it is made again when it is asked for."},
    {"snap-size", nullptr, "WxH", Completion::None, "Size of the pictures. Default: 320x180.",
     "Up to 16384 a side. A picture keeps the film's shape, with black bars where it has another. "
     "Pictures that are there already keep their size."},
    {"formats", nullptr, "LIST", Completion::None,
     "Media files to import, by suffix: mp4,mkv or '*.mp4;*.mkv;'.", ""},
    {"forbid", nullptr, "LIST", Completion::None, "Media files to refuse, in the same form.",
     "Goes before --formats."},
    {"all-files", nullptr, nullptr, Completion::None, "Try every file, whatever its suffix.", ""},
    {"allow-drm", nullptr, nullptr, Completion::None, "Import copy-protected media files too.",
     "They are described as far as that goes; there are no pictures of what cannot be decoded."},
    {"jobs", nullptr, "1-4", Completion::None,
     "Engine processes at work at once. Default: as many as cores, 4 at most.", ""},
    {"files-from", nullptr, "FILE", Completion::File,
     "Import the paths in FILE too, one a line; - is standard input.", ""},
    {"files0-from", nullptr, "FILE", Completion::File,
     "The same for paths that each end with a NUL byte, as of find -print0.", ""},
    {"shard", nullptr, "I/N", Completion::None,
     "Import only the I-th of N parts of the items, so that N machines share them.",
     "An item is a file or a folder of a disc, also below the folders that are given. Which part "
     "it belongs to is decided by a hash of its path as given, so that machines that are given the "
     "same paths need not talk to each other."},
    {"json", nullptr, "FILE", Completion::File,
     "Write what was found as JSON when all is over; - is standard output.", ""},
    {"json-lines", nullptr, "FILE", Completion::File,
     "Write each item as a line of JSON as soon as its pictures are there; - is standard output.",
     "FILE grows while the import runs, so that others can read along. The items are imported in "
     "parts and let go then: memory does not grow with their number. --events then has the events "
     "of one import a part."},
    {"html", nullptr, "FILE", Completion::File,
     "Write a page of pictures for a browser when all is over; - is standard output. With more "
     "than "
     "500 items the pictures are in a folder beside it: films_files for films.html.",
     "Otherwise FILE holds all that it shows. The folder is made for more than 5000 pictures too; "
     "pictures that are in it stay there. On standard output all are within the page, however many "
     "there are."},
    {"events", nullptr, nullptr, Completion::None,
     "Write each signal to standard output as it arrives, one JSON object a line.", ""},
    {"report", nullptr, "FILE", Completion::File,
     "Write the errors, if there are any, to a binary report.", "vspimport report FILE shows it."},
    {"quiet", nullptr, nullptr, Completion::None, "No summary and no progress.", ""},
    {"verbose", nullptr, nullptr, Completion::None,
     "Also the module's debug lines and the engine's messages.", ""},
    {"help", "h", nullptr, Completion::None, "Show this text.", ""},
    {"version", nullptr, nullptr, Completion::None,
     "Show the version, and how the engine's processes are confined.", ""},
};
const std::size_t optionCount = sizeof(optionTable) / sizeof(optionTable[0]);

const ExitStatusText exitStatusTable[] = {
    {"0", "Everything that can be imported was."},
    {"1", "Something could not be imported, or a path does not exist. Files of other kinds count "
          "only when they were named one by one."},
    {"2", "The arguments cannot be used, an output cannot be written, or the plug-in or its engine "
          "cannot be started."},
    {"130", "Stopped by Ctrl-C; what had been found was written."},
};
const std::size_t exitStatusCount = sizeof(exitStatusTable) / sizeof(exitStatusTable[0]);
