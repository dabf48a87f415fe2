// Functions of a library that is opened when it is wanted, so that the program starts without it.

#pragma once

namespace tarquil {

class SharedLibrary {
  public:
    // Opens the file (a name as "libjack.so.0", which the loader looks for); it stays open.
    explicit SharedLibrary(const char* file_name);

    // Sets a function pointer; null when the library has no function of that name.
    template <typename Function> void find(Function*& function, const char* name) {
        function = reinterpret_cast<Function*>(address(name));
        has_every_one = has_every_one && function != nullptr;
    }

    // Whether the file is there and had each function asked for.
    [[nodiscard]] bool has_all() const { return file != nullptr && has_every_one; }

  private:
    [[nodiscard]] void* address(const char* name) const;

    void* const file;
    bool has_every_one = true;
};

} // namespace tarquil
