#include "web/WebTest.h"

class ctlServerOptionsTest : public WebTest
{
protected:
    ctlServerOptionsTest()
    {
        write(u"options.xml"_s, options("Camp", 2346));
        write(u"modsset.txt"_s, "// \r\n\"\\mods\\bravo\"\r\n\"\\mods\\alpha\"\r\n");
        for (const auto &mod : {u"Alpha"_s, u"Bravo"_s, u"Charlie"_s}) {
            QDir(directory.path()).mkpath(u"Mods/"_s + mod);
            write(u"Mods/%1/ModsCont.txt"_s.arg(mod), "//\r\nname = \"" + mod.toLatin1() + "\"");
        }
        QFile::remove(path(u"Mods/Charlie/ModsCont.txt"_s)); // its folder's name is shown
        startSite();
        select(frmMain::ServerOptions);
    }

    static QByteArray options(const QByteArray &name, int joinPort, int difficulty = 2)
    {
        return "<Options><MPGameName>" + name + "</MPGameName><MOTD>Hello</MOTD><JoinPort>" +
               QByteArray::number(joinPort) +
               "</JoinPort><AnnouncePort>2347</AnnouncePort><GameSynchTimeout>60</GameSynchTimeout>"
               "<RemoteServerAccess>TRUE</RemoteServerAccess>"
               "<RemoteServerPasswd>pw</RemoteServerPasswd><RecordGame>FALSE</RecordGame>"
               "<BehindFirewall>FALSE</BehindFirewall><Difficulty>" +
               QByteArray::number(difficulty) + "</Difficulty></Options>";
    }

    void select(frmMain::Tab tab) const { child<QTabWidget>("tabMain")->setCurrentIndex(tab); }
    QLineEdit &box(const char *name) const { return *child<QLineEdit>(name); }
    QListWidget &mods() const { return *child<QListWidget>("lsvMods"); }
    void click(const char *button) const
    {
        QTest::mouseClick(child<QAbstractButton>(button), Qt::LeftButton);
    }
    void clickLabel(const char *name) const
    {
        QTest::mouseClick(child<QLabel>(name), Qt::LeftButton, {}, {9, 9});
    }
    void clickRow(int row, int x) const
    {
        const QRect place = mods().visualItemRect(mods().item(row));
        QTest::mouseClick(mods().viewport(), Qt::LeftButton, {}, {x, place.center().y()});
    }
    static constexpr int CheckMark = 10;
    static constexpr int Text = 60;

    /// The mods' initials, the active ones in order before the separator, the selected in capital.
    QString rows() const
    {
        QString text;
        for (int row = 0; row < mods().count(); ++row) {
            const QListWidgetItem &item = *mods().item(row);
            EXPECT_EQ(item.checkState() == Qt::Checked,
                      !text.contains(u'-') && item.text()[0] != u'-');
            const QString letter = item.text().left(1).toLower();
            text += item.isSelected() ? letter.toUpper() : letter;
        }
        std::sort(text.begin() + text.indexOf(u'-') + 1, text.end(), // have the file system's order
                  [](QChar a, QChar b) { return a.toLower() < b.toLower(); });
        return text;
    }
    /// Whether there is something to save.
    bool dirty() const
    {
        const bool result = child<QAbstractButton>("cmdSave")->isEnabled();
        EXPECT_EQ(child<QAbstractButton>("cmdCancel")->isEnabled(), result);
        return result;
    }
};

TEST_F(ctlServerOptionsTest, EveryEditMakesThePanelDirtyAndCancelTakesItBack)
{
    constexpr std::array Texts{"txtName",     "txtMOTD",         "txtPassword",
                               "txtJoinPort", "txtAnnouncePort", "txtSynchTimeout"};
    std::vector<std::function<void()>> edits{
        [&] { QTest::keyClick(child<QCheckBox>("chkRecordGame"), Qt::Key_Space); },
        [&] { clickLabel("lblAllowRemoteAccess"); },
        [&] { clickLabel("lblFirewall"); },
        [&] { clickRow(3, CheckMark); },
        [&] { click("cmdDecrease"); },
    };
    for (const char *name : Texts) {
        edits.emplace_back([=, this] { QTest::keyClick(&box(name), '1'); });
    }
    const auto shown = [&] {
        QStringList texts{rows()};
        for (const char *name : Texts) {
            texts += box(name).text();
        }
        for (const char *name : {"chkAllowRemoteAccess", "chkRecordGame", "chkFirewall"}) {
            texts += child<QCheckBox>(name)->isChecked() ? u"on"_s : u"off"_s;
        }
        return texts.join(u' ');
    };
    const QString stored = u"Ba-c Camp Hello pw 2346 2347 60 on off off"_s;
    EXPECT_EQ(shown(), stored);
    for (const auto &edit : edits) {
        EXPECT_FALSE(dirty());
        edit();
        EXPECT_NE(shown(), stored);
        EXPECT_TRUE(dirty());
        click("cmdCancel");
        EXPECT_EQ(shown(), stored);
        QTest::keyClick(&box("txtName"), ' '); // the button's key again
        EXPECT_EQ(shown(), stored);
    }
}

TEST_F(ctlServerOptionsTest, SaveWritesWhatWasEditedAndNothingElse)
{
    const QByteArray list = read(u"modsset.txt"_s);
    box("txtName").setText(u"A & B"_s);
    clickLabel("lblRecordGame");
    write(u"options.xml"_s, options("Behind", 70000, 5));
    QDir(directory.path()).rename(u"Mods"_s, u"away"_s);
    click("cmdSave");
    const QByteArray expected =
        options("A &amp; B", 70000, 5).replace("RecordGame>FALSE", "RecordGame>TRUE");
    EXPECT_TRUE(read(u"options.xml"_s).contains(expected)) << read(u"options.xml"_s).constData();
    EXPECT_EQ(read(u"modsset.txt"_s), list);
    EXPECT_EQ(rows(), u"-"_s);
    EXPECT_FALSE(dirty());
    EXPECT_EQ(fake.boxes.boxes, QStringList());
}

TEST_F(ctlServerOptionsTest, AnOddSettingShowsAsNothingIsToldOnceAndStaysUntilItIsEdited)
{
    const QByteArray odd = options("Camp", 70000)
                               .replace("<MOTD>Hello</MOTD>", "")
                               .replace("BehindFirewall>FALSE", "BehindFirewall>x");
    write(u"options.xml"_s, odd);
    write(u"modsset.txt"_s, "\"\\mods\\charlie\"\r\n");
    for (int times = 0; times < 2; ++times) {
        select(frmMain::Main);
        select(frmMain::ServerOptions);
    }
    EXPECT_EQ(box("txtJoinPort").text() + box("txtMOTD").text(), QString());
    EXPECT_FALSE(child<QCheckBox>("chkFirewall")->isChecked());
    EXPECT_EQ(box("txtAnnouncePort").text(), u"2347"_s);
    EXPECT_EQ(rows(), u"C-ab"_s);
    EXPECT_FALSE(dirty());
    EXPECT_EQ(recordCount(), 3);
    box("txtName").setText(u"x"_s);
    click("cmdSave");
    EXPECT_TRUE(read(u"options.xml"_s).contains(QByteArray(odd).replace("Camp", "x")));
    box("txtJoinPort").setText(u"7"_s);
    clickLabel("lblFirewall");
    click("cmdSave");
    const QByteArray mended = read(u"options.xml"_s);
    EXPECT_TRUE(mended.contains("<JoinPort>7<") && mended.contains("<BehindFirewall>TRUE<"));
    EXPECT_EQ(recordCount(), 3);
    QTest::keyClick(&box("txtMOTD"), 'x'); // for which the file has no place
    click("cmdSave");
    EXPECT_EQ(lastRecord(), u"Server Options Panel|cmdSave_Click|Unknown|75"_s);
    EXPECT_EQ(box("txtMOTD").text(), u"x"_s);
    EXPECT_TRUE(fake.boxes.boxes.last().endsWith(child<QLabel>("lblProblem")->text()));
}

TEST_F(ctlServerOptionsTest, WithoutTheGamesFileTheFieldsAreOffUntilItIsThereAndWhole)
{
    const auto *const problem = child<QLabel>("lblProblem");
    QFile::remove(path(u"options.xml"_s));
    select(frmMain::Main);
    select(frmMain::ServerOptions);
    EXPECT_EQ(problem->text(), u"options.xml not found: start the game once"_s);
    QTest::keyClick(&box("txtName"), 'x');
    EXPECT_EQ(box("txtName").text(), u"Camp"_s);
    write(u"options.xml"_s, options("Made", 2346).first(100));
    fake.clock.advance(500);
    EXPECT_TRUE(problem->text().endsWith(u"Not well-formed XML"_s));
    write(u"options.xml"_s, options("Made", 2346));
    fake.clock.advance(500);
    QTest::keyClick(&box("txtName"), 'x');
    EXPECT_EQ(box("txtName").text(), u"xMade"_s);
    EXPECT_FALSE(problem->isVisible());

    // An edit stays, also while the file is away.
    QFile::remove(path(u"options.xml"_s));
    click("cmdSave");
    child<QPushButton>("cmdCancel")->click();
    EXPECT_FALSE(box("txtName").isEnabled());
    write(u"options.xml"_s, options("Other", 1));
    fake.clock.advance(500);
    click("cmdSave");
    EXPECT_TRUE(read(u"options.xml"_s).contains(options("xMade", 1)));
}

TEST_F(ctlServerOptionsTest, TheWebAndThePanelWorkOnOneListOfMods)
{
    const auto web = [](const QByteArray &mod, const QByteArray &button) {
        post("/EditMod", "modname=%5Cmods%5C" + mod + "&ActionButton=" + button);
    };
    clickRow(1, Text);
    web("charlie", "++Activate++");
    EXPECT_EQ(rows(), u"bAc-"_s);
    box("txtName").setText(u"x"_s);
    web("charlie", "^");
    EXPECT_EQ(rows(), u"bcA-"_s);

    clickRow(2, CheckMark);
    EXPECT_EQ(rows(), u"bc-A"_s);
    web("bravo", "Deactivate");
    post("/UpdateAdminServerOptionsConfig", "ServerName=web&MOTD=web");
    EXPECT_EQ(rows(), u"bc-A"_s) << "unsaved edits";
    EXPECT_EQ(box("txtName").text(), u"x"_s);
    click("cmdSave");
    EXPECT_EQ(rows(), u"C-ab"_s);
    EXPECT_TRUE(read(u"modsset.txt"_s).endsWith("SYSTEM\r\n\"\\mods\\charlie\"\r\n"));
    EXPECT_TRUE(read(u"options.xml"_s).contains("<MPGameName>x</MPGameName><MOTD>web</MOTD>"));

    server().StartGRServer(true);
    write(u"modsset.txt"_s, "\"\\mods\\bravo\"\r\n");
    root->WebSite()->Page(PageKey::PublicStatus).setStale(true);
    EXPECT_TRUE(page(PageKey::PublicStatus).contains("Active Mods:  </b>Bravo - <"));
    EXPECT_EQ(rows(), u"b-aC"_s);
}

TEST_F(ctlServerOptionsTest, NothingIsSavedWhileTheServerRunsAndTheWarningFollowsTheHeartbeat)
{
    const auto *const warning = child<QLabel>("lblSaveWarning");
    server().StartGRServer(true);
    fake.clock.advance(500);
    EXPECT_TRUE(warning->isVisible());
    QTest::keyClick(&box("txtName"), 'x');
    click("cmdSave");
    EXPECT_EQ(
        fake.boxes.boxes,
        QStringList{u"Please note|64|You will need to stop the server to save your changes."_s});
    EXPECT_TRUE(read(u"options.xml"_s).contains(options("Camp", 2346)));
    EXPECT_EQ(box("txtName").text(), u"xCamp"_s);
    EXPECT_TRUE(dirty());
    server().StopGRServer();
    fake.clock.advance(500);
    EXPECT_FALSE(warning->isVisible());
}

TEST_F(ctlServerOptionsTest, AFailureIsRecordedAndKeepsTheEdits)
{
    QTest::keyClick(&box("txtName"), 'x');
    clickRow(3, CheckMark);
    const QByteArray list = read(u"modsset.txt"_s);
    const QString full = QString::number(FailingFiles::diskFull().number());
    fake.files.failAt = fake.files.operations + 2;
    click("cmdSave");
    EXPECT_EQ(lastRecord(), u"Server Options Panel|cmdSave_Click|Unknown|"_s + full);
    EXPECT_TRUE(read(u"options.xml"_s).contains(options("Camp", 2346)));
    EXPECT_TRUE(fake.boxes.boxes.join(u'\n').startsWith(u"Server Options Not Saved|16|Your"_s));
    fake.files.failAt = fake.files.operations + 8;
    click("cmdSave");
    EXPECT_EQ(lastRecord(), u"Options XML Class|Save|Unknown|"_s + full);
    EXPECT_TRUE(read(u"options.xml"_s).contains(options("xCamp", 2346)));
    EXPECT_EQ(read(u"modsset.txt"_s), list);
    EXPECT_EQ(rows(), u"baC-"_s);
    EXPECT_TRUE(dirty());
    EXPECT_EQ(fake.boxes.boxes.join(u'\n').count(u"\r\n\r\nNo space"_s), 2);
    fake.files.failAt = 0;
    write(u"options.xml"_s, options("Other", 2346));
    click("cmdSave"); // which has only the mods to save
    EXPECT_TRUE(read(u"options.xml"_s).contains(options("Other", 2346)));
    EXPECT_NE(read(u"modsset.txt"_s), list);
}
