modern.fnt modern.fnt
modern modern.fnt
fixed #fixed
courier #-*-courier-medium-r-normal--{14}-*-*-*-*-*-*-*
helvetica #-*-helvetica-medium-r-normal--{14}-*-*-*-*-*-*-*
helvbold #-*-helvetica-bold-r-normal--{14}-*-*-*-*-*-*-*
times #-*-times-medium-r-normal--{14}-*-*-*-*-*-*-*
