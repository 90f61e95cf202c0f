#pragma once

#include "platform/Failure.h"
#include "platform/XmlDocument.h"

#include <QString>

#include <cstdint>
#include <optional>

class clsOptionsXML;

/// One setting in the game's file: the text of the first element of its name. Reading it throws
/// platform::Failure, which names the element, where the text, or an element that is missing, is no
/// such value; writing it changes nothing where the element is missing.
template <typename Value>
class GameSetting
{
public:
    GameSetting(clsOptionsXML &file, const char *element) : m_file(file), m_element(element) {}

    Value operator()() const;
    void Let(const Value &value);
    /// Throws platform::Failure where the element is missing.
    void require() const;
    const char *Name() const { return m_element; }

private:
    clsOptionsXML &m_file;
    const char *m_element;
};

/// A colour in the game's file, in three elements that end in R, G and B: red + 256 x green +
/// 65536 x blue, each from 0 to 255. What is no number there reads as 0, too large a one as 255.
class GameColour
{
public:
    GameColour(clsOptionsXML &file, const char *element) : m_file(file), m_element(element) {}

    std::int32_t operator()() const;
    void Let(std::int32_t colour);

private:
    clsOptionsXML &m_file;
    const char *m_element;
};

/// The settings in the game's own file "options.xml" that a server's operator edits. The file is
/// edited in place: no element is added, and nothing else in it changes. For one edit: make it,
/// Load(), read and write, Save().
class clsOptionsXML
{
public:
    /// Makes a read-only file writable.
    clsOptionsXML();
    clsOptionsXML(const clsOptionsXML &) = delete;
    clsOptionsXML &operator=(const clsOptionsXML &) = delete;
    ~clsOptionsXML() = default;

    bool IsLoaded() const { return m_document.has_value(); }
    /// Reads the file; IsLoaded() tells whether it could be parsed.
    void Load();
    /// The same, but throws platform::Failure where the file is missing or cannot be parsed.
    void loadOrFail();
    /// Tells one content of the file from another; empty without a file.
    static QString stampOfFile();
    /// Replaces the file; nothing where none is loaded. Throws platform::Failure, also for a file
    /// whose encoding the XML library reads, but writes so that it could not be read again.
    void Save();

    GameSetting<std::int32_t> AnnouncePort{*this, "AnnouncePort"};
    GameSetting<bool> BehindFirewall{*this, "BehindFirewall"};
    GameSetting<std::int32_t> GameSynchTimeout{*this, "GameSynchTimeout"};
    GameSetting<std::int32_t> JoinPort{*this, "JoinPort"};
    GameSetting<QString> MPGameName{*this, "MPGameName"};
    GameSetting<QString> MOTD{*this, "MOTD"};
    GameSetting<bool> RecordGame{*this, "RecordGame"};
    GameSetting<bool> RemoteServerAccess{*this, "RemoteServerAccess"};
    GameSetting<QString> RemoteServerPasswd{*this, "RemoteServerPasswd"};

    // Of the interface, without a user here.
    GameSetting<bool> ShowDeadBodies{*this, "ShowDeadBodies"};
    GameSetting<bool> ShowFrameRate{*this, "ShowFrameRate"};
    GameSetting<QString> PlayerName{*this, "PlayerName"};
    GameColour RetColor{*this, "ReticuleColor"};
    GameColour IFFRetColor{*this, "ReticuleIFFColor"};
    /// Whether there was a file when this object was made.
    bool FileExists() const { return m_fileExists; }
    /// Empties the first `IPAddress` element whose whole text is the address.
    void RemoveGRServer(const QString &address);

private:
    template <typename Value>
    friend class GameSetting;
    friend class GameColour;

    std::optional<platform::XmlElement> find(const QString &element);
    QString GetNodeValue(const QString &element);
    void SetNodeValue(const QString &element, const QString &text);

    QString m_path;
    bool m_fileExists;
    std::optional<platform::XmlDocument> m_document;
};
