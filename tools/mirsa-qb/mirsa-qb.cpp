// Carries one message to the QuickBooks that runs on this desk: the message comes on standard
// input, the answer goes to standard output. Everything goes through the request processor's
// dispatch interface, found by its name when the program runs, so that nothing of QuickBooks is
// needed to build it.
//
//     mirsa-qb [--seconds N] [--class NAME]
//
// Exit codes: 0 answered, 1 QuickBooks isn't running or has no company open, 2 not sent for another
// reason, 3 sent, and nobody knows what became of it. The reason stands on standard error.
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <ole2.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

enum ExitCode { Answered = 0, NotOpen = 1, NotSent = 2, Unknown = 3 };

// What the request processor says where QuickBooks isn't open.
constexpr HRESULT couldNotStart = static_cast<HRESULT>(0x80040408);
constexpr HRESULT notRunning = static_cast<HRESULT>(0x80040416);
constexpr HRESULT noCompanyOpen = static_cast<HRESULT>(0x80040417);
constexpr HRESULT unreadableMessage = static_cast<HRESULT>(0x80040400);

volatile LONG sent = 0; ///< the message was handed over

std::string utf8(const std::wstring& text) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                         nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), size,
                        nullptr, nullptr);
    return bytes;
}

std::wstring wide(const std::string& bytes) {
    const int size =
        MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
    std::wstring text(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                        size);
    return text;
}

void say(const std::wstring& text) {
    const std::string bytes = utf8(text) + "\n";
    fwrite(bytes.data(), 1, bytes.size(), stderr);
    fflush(stderr);
}

struct Failure {
    HRESULT code;
    std::wstring text;
};

std::wstring hex(HRESULT code) {
    wchar_t text[16];
    swprintf(text, 16, L"0x%08lX", static_cast<unsigned long>(code));
    return text;
}

/// A text or a number as an argument or a result.
class Variant {
  public:
    Variant() { VariantInit(&m_value); }
    explicit Variant(const std::wstring& text) : Variant() {
        m_value.vt = VT_BSTR;
        m_value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    }
    explicit Variant(long number) : Variant() {
        m_value.vt = VT_I4;
        m_value.lVal = number;
    }
    Variant(Variant&& other) noexcept : m_value(other.m_value) { VariantInit(&other.m_value); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&m_value); }
    VARIANT* get() { return &m_value; }
    std::wstring text() {
        if (m_value.vt != VT_BSTR)
            VariantChangeType(&m_value, &m_value, 0, VT_BSTR);
        return m_value.vt == VT_BSTR && m_value.bstrVal
                   ? std::wstring(m_value.bstrVal, SysStringLen(m_value.bstrVal))
                   : std::wstring();
    }

  private:
    VARIANT m_value;
};

/// The request processor, spoken to by the names of its methods.
class Processor {
  public:
    explicit Processor(const std::wstring& name) {
        CLSID id;
        HRESULT result = CLSIDFromProgID(name.c_str(), &id);
        if (SUCCEEDED(result))
            result = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                      IID_IDispatch, reinterpret_cast<void**>(&m_dispatch));
        if (FAILED(result))
            throw Failure{result, L"QuickBooks, or the part of it that takes messages, isn't "
                                  L"installed on this desk for programs of this kind (" +
                                      hex(result) + L")."};
    }
    ~Processor() { m_dispatch->Release(); }
    Processor(const Processor&) = delete;
    Processor& operator=(const Processor&) = delete;

    template <class... Arguments>
    Variant call(const wchar_t* method, Arguments&&... arguments) {
        std::vector<Variant> kept;
        (kept.emplace_back(std::forward<Arguments>(arguments)), ...);
        std::vector<VARIANT> last; // the last argument comes first
        for (auto argument = kept.rbegin(); argument != kept.rend(); ++argument)
            last.push_back(*argument->get());
        DISPID id = 0;
        auto* name = const_cast<LPOLESTR>(method);
        HRESULT result = m_dispatch->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
        if (FAILED(result))
            throw Failure{result, std::wstring(L"The request processor knows no ") + method +
                                      L" (" + hex(result) + L")."};
        DISPPARAMS parameters{last.data(), nullptr, static_cast<UINT>(last.size()), 0};
        Variant answer;
        EXCEPINFO thrown{};
        result = m_dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                    answer.get(), &thrown, nullptr);
        if (FAILED(result)) {
            const HRESULT code = result == DISP_E_EXCEPTION && thrown.scode ? thrown.scode : result;
            const std::wstring text =
                thrown.bstrDescription ? thrown.bstrDescription : std::wstring(method) + L" failed";
            SysFreeString(thrown.bstrDescription);
            SysFreeString(thrown.bstrSource);
            SysFreeString(thrown.bstrHelpFile);
            throw Failure{code, text + L" (" + hex(code) + L")."};
        }
        return answer;
    }
    /// On the way out: what can't be ended any more doesn't matter.
    template <class... Arguments>
    void leave(const wchar_t* method, Arguments&&... arguments) {
        try {
            call(method, std::forward<Arguments>(arguments)...);
        } catch (const Failure&) {
        }
    }

  private:
    IDispatch* m_dispatch = nullptr;
};

/// The five steps. The session and the connection are ended on every way out.
std::wstring exchange(const std::wstring& className, const std::wstring& request) {
    Processor processor(className);
    processor.call(L"OpenConnection", std::wstring(L"123"), std::wstring(L"Mirsa"));
    std::wstring ticket;
    bool begun = false;
    try {
        // No file name: the company that is open; mode 2: whichever mode it is open in.
        ticket = processor.call(L"BeginSession", std::wstring(), 2L).text();
        begun = true;
        InterlockedExchange(&sent, 1);
        std::wstring answer = processor.call(L"ProcessRequest", ticket, request).text();
        processor.leave(L"EndSession", ticket);
        processor.leave(L"CloseConnection");
        return answer;
    } catch (const Failure&) {
        if (begun)
            processor.leave(L"EndSession", ticket);
        processor.leave(L"CloseConnection");
        throw;
    }
}

/// Ends the program where QuickBooks waits for somebody at its desk.
DWORD WINAPI watch(void* seconds) {
    Sleep(static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(seconds)) * 1000);
    say(sent ? L"QuickBooks took the message and gave no answer in time."
             : L"QuickBooks didn't let the message in in time. Perhaps it shows a question.");
    TerminateProcess(GetCurrentProcess(), sent ? Unknown : NotSent);
    return 0;
}

std::string readAll() {
    std::string all;
    char piece[65536];
    for (size_t size; (size = fread(piece, 1, sizeof piece, stdin)) > 0;)
        all.append(piece, size);
    return all;
}

int carry(const std::wstring& className, const std::wstring& request) {
    try {
        const std::string answer = utf8(exchange(className, request));
        fwrite(answer.data(), 1, answer.size(), stdout);
        return fflush(stdout) == 0 ? Answered : Unknown;
    } catch (const Failure& failure) {
        say(failure.text);
        if (failure.code == couldNotStart || failure.code == notRunning ||
            failure.code == noCompanyOpen)
            return NotOpen;
        return sent && failure.code != unreadableMessage ? Unknown : NotSent;
    }
}

} // namespace

int wmain(int argc, wchar_t** argv) {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    std::wstring className = L"QBXMLRP.RequestProcessor";
    unsigned long seconds = 240;
    for (int i = 1; i < argc; i += 2) {
        const std::wstring option = argv[i];
        if (i + 1 < argc && option == L"--seconds") {
            seconds = wcstoul(argv[i + 1], nullptr, 10);
        } else if (i + 1 < argc && option == L"--class") {
            className = argv[i + 1];
        } else {
            say(L"mirsa-qb [--seconds N] [--class NAME] takes a message on standard input.");
            return NotSent;
        }
    }
    const std::wstring request = wide(readAll());
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return NotSent;
    CloseHandle(CreateThread(nullptr, 0, watch,
                             reinterpret_cast<void*>(static_cast<ULONG_PTR>(seconds)), 0, nullptr));
    const int code = carry(className, request);
    CoUninitialize();
    return code;
}
