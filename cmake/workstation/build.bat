@echo off
rem Builds the workspace that this file lies in with the platform's own tools:
rem   build.bat TOOLS LEVEL CATIA    such as  build.bat C:\RADE V5_6R2018_B28 "C:\Program Files\Dassault Systemes\B28"
rem The tools may end with 0 although they failed, so their output is searched.
setlocal
if "%~3"=="" (
    echo usage: build.bat TOOLS LEVEL CATIA
    exit /b 2
)
cd /d "%~dp0"
call "%~1\win_b64\code\command\tck_init.bat"
call tck_profile %~2
call mkGetPreq -p "%~3" > build.log 2>&1
call mkmk -a -u >> build.log 2>&1
type build.log
findstr /r /c:"mkmk-ERROR" /c:"make-ERROR" /c:"syst-ERROR" /c:"error C[0-9]" /c:"error LNK[0-9]" /c:"fatal error" build.log > errors.log
if not errorlevel 1 (
    echo The build failed:
    type errors.log
    exit /b 1
)
if not exist win_b64\code\bin\VornTools.dll (
    echo The build wrote no VornTools.dll.
    exit /b 1
)
call mkCreateRuntimeView >> build.log 2>&1
echo win_b64\code\bin\VornTools.dll is built.
