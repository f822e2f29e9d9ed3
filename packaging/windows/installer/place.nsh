; The folder: whether it can be used, and who may write to it.

; Administrators and the system may do everything, users read and run. "P": what
; the folder above allows does not count.
!define CODE_RIGHTS "O:BAG:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)"
; A file that the program keeps up to date for whoever uses it: read and write.
!define DATA_RIGHTS "D:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x12019f;;;BU)"

; Nothing that an ordinary user could have laid out may lie beside the program: a
; folder is new, empty, or one of ours. May be called from a page or silently.
Function checkFolder
    Call checkPath
    Call checkVersion
    Call checkContent
    Call checkSpace
FunctionEnd

Function checkPath
    StrCpy $0 $INSTDIR 2
    StrLen $1 $INSTDIR
    ${If} $0 == "\\"
    ${OrIf} $1 < 4
    ${OrIf} $1 > 140
        ${Refuse} "$(BadFolder)" ${EXIT_FOLDER}
    ${EndIf}
    StrLen $1 $WINDIR
    StrCpy $0 $INSTDIR $1
    ${If} $0 == $WINDIR
        ${Refuse} "$(BadFolder)" ${EXIT_FOLDER}
    ${EndIf}
FunctionEnd

; What is installed may be newer.
Function checkVersion
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" DisplayVersion
    ${If} $0 == ""
        Return
    ${EndIf}
    ${VersionCompare} "${VERSION}" $0 $1
    ${If} $1 <> 2
        Return
    ${EndIf}
    ${If} ${Silent}
        ${Refuse} "$(NewerIsThere)" ${EXIT_NEWER}
    ${EndIf}
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "$(ReplaceNewer)" IDYES goOn
    Abort
goOn:
FunctionEnd

; $0: 1 when the folder is one that an installer of ours has protected.
Function isOurs
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 == $INSTDIR
        StrCpy $0 1
        Return
    ${EndIf}
    ReadRegStr $0 HKLM "${LEFT_KEY}" LeftIn
    ${If} $0 == $INSTDIR
        StrCpy $0 1
        Return
    ${EndIf}
    StrCpy $0 0
FunctionEnd

Function checkContent
    Call isOurs
    ${If} $0 = 1
        Return
    ${EndIf}
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" InstallLocation
    ${If} $0 != ""
        ${Refuse} "$(ElsewhereAlready)" ${EXIT_FOLDER}
    ${EndIf}
    ${DirState} $INSTDIR $0
    ${If} $0 = 1
        ${Refuse} "$(NotEmpty)" ${EXIT_FOLDER}
    ${EndIf}
FunctionEnd

; Twice the size at most: an upgrade lies beside what it replaces.
Function checkSpace
    StrCpy $0 $INSTDIR
    ${Do}
        ${If} ${FileExists} "$0\*.*"
            ${Break}
        ${EndIf}
        StrCpy $1 $0
        ${GetParent} $0 $0
    ${LoopUntil} $0 == ""
    System::Call 'kernel32::GetDiskFreeSpaceExW(w "$0\", *l .r1, p 0, p 0) i .r2'
    ${If} $2 = 0
        Return ; making the folder will say why
    ${EndIf}
    System::Int64Op $1 / 1024
    Pop $1
    System::Int64Op $1 < ${SIZE}
    Pop $2
    ${If} $2 = 1
        ${Refuse} "$(Full)" ${EXIT_FULL}
    ${EndIf}
FunctionEnd

; With the rights from its first moment on. From here on the folder is ours, even
; when the machine is switched off before we are done.
Function makeFolder
    System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w "${CODE_RIGHTS}", i 1, *p .r1, p 0) i .r0'
    ${If} $0 = 0
        ${Fail} "$(CannotMakeFolder)" ${EXIT_FOLDER}
    ${EndIf}
    ${GetParent} $INSTDIR $2
    Call noteWhatIsAbove
    Call makeParents
    Call isOurs
    ${If} $0 = 1
    ${AndIf} ${FileExists} "$INSTDIR\*.*"
        ; PROTECTED_DACL_SECURITY_INFORMATION, DACL_SECURITY_INFORMATION
        System::Call 'advapi32::SetFileSecurityW(w "$INSTDIR", i 0x80000004, p r1) i .r0'
    ${Else}
        ; One that is empty may be somebody's, who could change its rights.
        RMDir $INSTDIR
        System::Call '*(&i4 24, &i4 0, p r1, p 0) p .r3'
        System::Call 'kernel32::CreateDirectoryW(w "$INSTDIR", p r3) i .r0'
        System::Free $3
    ${EndIf}
    System::Call 'kernel32::LocalFree(p r1)'
    ${If} $0 = 0
        ${Fail} "$(CannotMakeFolder)" ${EXIT_FOLDER}
    ${EndIf}
    WriteRegStr HKLM "${UNINSTALL_KEY}" InstallLocation $INSTDIR
FunctionEnd

; The nearest folder above $2 that is there: the uninstaller takes away what we make
; below it.
Function noteWhatIsAbove
    ReadRegStr $4 HKLM "${UNINSTALL_KEY}" Above
    ${If} $4 == ""
        ReadRegStr $4 HKLM "${LEFT_KEY}" Above
    ${EndIf}
    ${If} $4 == ""
        StrCpy $4 $2
        ${DoUntil} ${FileExists} "$4\*.*"
            ${GetParent} $4 $4
            ${If} $4 == ""
                ${Break}
            ${EndIf}
        ${Loop}
    ${EndIf}
    WriteRegStr HKLM "${UNINSTALL_KEY}" Above $4
FunctionEnd

; The folders above $INSTDIR that are missing, with the same rights; $1 are the
; rights, $2 the nearest one. Nobody shall be able to exchange one of them.
Function makeParents
    ${If} $2 == ""
    ${OrIf} ${FileExists} "$2\*.*"
        Return
    ${EndIf}
    Push $2
    ${GetParent} $2 $2
    Call makeParents
    Pop $2
    System::Call '*(&i4 24, &i4 0, p r1, p 0) p .r3'
    System::Call 'kernel32::CreateDirectoryW(w "$2", p r3) i .r0'
    System::Free $3
FunctionEnd

; What the program, or the streaming server, writes beside the program, ordinary
; users may write, and only that: neither is anything that is run.
Function leaveDataToUsers
    ${Unless} ${FileExists} "$INSTDIR\compare.json"
        FileOpen $0 "$INSTDIR\compare.json" w
        FileWrite $0 "{}$\r$\n"
        FileClose $0
    ${EndUnless}
    System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w "${DATA_RIGHTS}", i 1, *p .r1, p 0)'
    System::Call 'advapi32::SetFileSecurityW(w "$INSTDIR\compare.json", i 0x80000004, p r1)'
    ${If} ${FileExists} "$INSTDIR\session.json"
        System::Call 'advapi32::SetFileSecurityW(w "$INSTDIR\session.json", i 0x80000004, p r1)'
    ${EndIf}
    System::Call 'kernel32::LocalFree(p r1)'
    ClearErrors
FunctionEnd

; The empty folders between $INSTDIR and $R3, which was there before us.
!macro removeParentsFunction UN
    Function ${UN}removeParents
        StrCpy $0 $INSTDIR
        ${Do}
            ${GetParent} $0 $0
            ${If} $0 == ""
            ${OrIf} $0 == $R3
            ${OrIf} $R3 == ""
                ${Break}
            ${EndIf}
            RMDir $0
        ${Loop}
    FunctionEnd
!macroend
!insertmacro removeParentsFunction ""
