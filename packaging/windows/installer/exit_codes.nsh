; How the installer and the uninstaller end. README.md has the table.
!define EXIT_DONE 0
!define EXIT_CANNOT_WRITE 2  ; also NSIS' own
!define EXIT_OTHER_SETUP 3   ; another installer is at work
!define EXIT_OLD_WINDOWS 4
!define EXIT_FOLDER 5        ; cannot be used
!define EXIT_RUNNING 6       ; the program runs
!define EXIT_FULL 7          ; the disk
!define EXIT_HELD 8          ; another program holds a file
!define EXIT_NEWER 9         ; a newer version is there
!define EXIT_NOT_GIVEN_BACK 10
