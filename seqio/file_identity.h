// Which file or stream a name stands for, so that nothing is overwritten that is still needed.
#pragma once

#include <string>
#include <vector>

namespace velto {

// The descriptor that an output's name such as "-" or "/dev/stdout" stands for, else -1.
int outputDescriptor(const std::string& path);

// The absolute path over all symbolic links, also of a file that is not there yet; `path` itself if
// its folder cannot be found.
std::string resolvedPath(const std::string& path);

// Why files cannot be read and written in one run, "" if they can: an output that is a file to be
// read, two outputs to one file or stream, a stream to be read twice. "-" is standard input and
// standard output. Any number of outputs may go to /dev/null.
std::string clashOf(const std::vector<std::string>& inputs,
                    const std::vector<std::string>& outputs);

}  // namespace velto
