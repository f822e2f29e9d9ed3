; The installer. packaging/windows/package.cmake hands in what differs:
;   STAGE    the folder that is installed
;   OUTPUT   the installer to be made
;   VERSION  of the program, four numbers
;   ICON     its icon
;   SIZE     of what is installed, in KB
;   COMPRESSOR  optionally, in NSIS' words
;   SIGNER   optionally, a program that signs the file it is called with
;
; It never leaves a mixture behind. Everything is laid out in a folder of its own
; first; then the libraries of the new version come beside those of the old one,
; which the program finds by its version; and then the program itself is replaced,
; in one step. Until then the old version works, from then on the new one.
;
; Silent: setup.exe /S [/STARTUP] [/NODESKTOP] [/LOG=FILE] [/D=FOLDER], the folder
; last and without quotation marks. exit_codes.nsh says how it ends.

Unicode true
Target amd64-unicode
!ifndef COMPRESSOR
    !define COMPRESSOR "/SOLID lzma"
!endif
SetCompressor ${COMPRESSOR}
!ifdef SIGNER
    !uninstfinalize '"${SIGNER}" "%1"'
!endif
; Otherwise the installer would depend on the times of the files.
SetDateSave off
ManifestSupportedOS Win10
ManifestDPIAware true
RequestExecutionLevel admin

!define PROGRAM KOLM_Streaming_Assistant
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAM}"
; Names the folder that an uninstallation has left to files of others.
!define LEFT_KEY "Software\KOLM\${PROGRAM}"
!define NEW_FILES "new-files.tmp"
!define OLD_FILES "old-files-" ; and the version

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include Sections.nsh
!include WinVer.nsh

Var isUpgrade    ; 1 when a version is installed already
Var isInstalling ; 1 from the first change on
Var hasSaidWhy   ; 1 when it was said why it cannot be done

!include exit_codes.nsh
!include refuse.nsh
!include running.nsh
!include place.nsh
!include moving.nsh

Name "$(ProgramName)"
OutFile "${OUTPUT}"
BrandingText "KOLM ${VERSION}"
VIProductVersion ${VERSION}
VIAddVersionKey /LANG=0 ProductName "KOLM Streaming Assistant"
VIAddVersionKey /LANG=0 CompanyName "KOLM"
VIAddVersionKey /LANG=0 FileDescription "KOLM Streaming Assistant Setup"
VIAddVersionKey /LANG=0 FileVersion ${VERSION}
VIAddVersionKey /LANG=0 ProductVersion ${VERSION}
VIAddVersionKey /LANG=0 LegalCopyright "KOLM"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE leaveFolderPage
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE closeProgram
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION startProgram
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

; The first one is for every other language.
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "SimpChinese"
!insertmacro MUI_LANGUAGE "Japanese"
!include texts.nsh

Function .onInit
    SetShellVarContext all
    SetRegView 64
    Call takeTurn
    !insertmacro chooseLanguage
    ${Unless} ${AtLeastWin10}
        ${Refuse} "$(OldWindows)" ${EXIT_OLD_WINDOWS}
    ${EndUnless}
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $INSTDIR == ""
        StrCpy $INSTDIR $0
    ${EndIf}
    ${If} $INSTDIR == ""
        ; Not below "Program Files": the program warns there, because a Steam that
        ; was started by it would lack rights.
        StrCpy $INSTDIR $WINDIR 2
        StrCpy $INSTDIR "$INSTDIR\${PROGRAM}"
    ${EndIf}
    Call chooseShortcuts
    ${If} ${Silent}
        Call checkFolder
        Call closeProgram
    ${EndIf}
FunctionEnd

Function leaveFolderPage
    Call checkFolder
FunctionEnd

Section "$(ProgramName)" programSection
    SectionIn RO
    AddSize ${SIZE}
    StrCpy $isInstalling 1
    Call makeFolder
    RMDir /r "$INSTDIR\${NEW_FILES}"
    ClearErrors
    SetOutPath "$INSTDIR\${NEW_FILES}"
    File /r "${STAGE}/*.*"
    WriteUninstaller "$INSTDIR\${NEW_FILES}\uninstall.exe"
    ${If} ${Errors}
        ${Fail} "$(CannotWrite)" ${EXIT_CANNOT_WRITE}
    ${EndIf}
    SetOutPath $INSTDIR
    ; The page may have been left a while ago.
    Call closeProgram
    Call putInPlace
    Call enterInRegistry
    Call leaveDataToUsers
    Call removeOldVersions
SectionEnd

Section "$(StartMenuEntry)" startMenuSection
    SectionIn RO
    CreateShortcut "$SMPROGRAMS\$(ProgramName).lnk" "$INSTDIR\${PROGRAM}.exe"
    Call removeOtherNames
SectionEnd

Section "$(DesktopEntry)" desktopSection
    CreateShortcut "$DESKTOP\$(ProgramName).lnk" "$INSTDIR\${PROGRAM}.exe"
SectionEnd

Section /o "$(StartWithWindows)" startupSection
    CreateShortcut "$SMSTARTUP\$(ProgramName).lnk" "$INSTDIR\${PROGRAM}.exe"
SectionEnd

; What is no longer chosen goes.
Section "-shortcuts"
    ${Unless} ${SectionIsSelected} ${desktopSection}
        !insertmacro eachName deleteShortcut $DESKTOP
    ${EndUnless}
    ${Unless} ${SectionIsSelected} ${startupSection}
        !insertmacro eachName deleteShortcut $SMSTARTUP
    ${EndUnless}
    SetErrorLevel ${EXIT_DONE}
SectionEnd

; As they were chosen before, or as the command line says.
Function chooseShortcuts
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" DisplayVersion
    StrCpy $isUpgrade 0
    ${If} $0 != ""
        StrCpy $isUpgrade 1
        StrCpy $1 0
        !insertmacro eachName countShortcut $DESKTOP
        ${If} $1 = 0
            !insertmacro UnselectSection ${desktopSection}
        ${EndIf}
        StrCpy $1 0
        !insertmacro eachName countShortcut $SMSTARTUP
        ${If} $1 > 0
            !insertmacro SelectSection ${startupSection}
        ${EndIf}
    ${EndIf}
    ${GetParameters} $R0
    ClearErrors
    ${GetOptions} $R0 "/STARTUP" $R1
    ${Unless} ${Errors}
        !insertmacro SelectSection ${startupSection}
    ${EndUnless}
    ClearErrors
    ${GetOptions} $R0 "/NODESKTOP" $R1
    ${Unless} ${Errors}
        !insertmacro UnselectSection ${desktopSection}
    ${EndUnless}
FunctionEnd

; By the user's own shell: the program shall not get the installer's rights.
Function startProgram
    Exec '"$WINDIR\explorer.exe" "$SMPROGRAMS\$(ProgramName).lnk"'
FunctionEnd

Function .onInstFailed
    ; NSIS itself gives up when a file cannot be written, and has a box of its own.
    ${If} $hasSaidWhy <> 1
    ${AndIf} ${Silent}
        !insertmacro tell "$(CannotWrite)"
    ${EndIf}
    Call takeBack
FunctionEnd

!include uninstaller.nsh
